#include "Globals.h"

#include "LineReader.h"
#include "ScriptEngine.h"
#include "TextBridge.h"
#include "hosts/FolderObject.h"
#include "hosts/Hosts.h"

#include <krcore/files/FileUtils.h>
#include <krcore/foundation/Heap.h>

#include <cstdio>

namespace krhost::Globals {

namespace {

constexpr int currentFolder = 0;

struct SpecialFolder {
    const char* name;
    int kind;
};
constexpr SpecialFolder specialFolders[] = {{"current", currentFolder},
                                            {"startup", KrCore::FileUtils::StartupDir},
                                            {"temp", KrCore::FileUtils::TempDir},
                                            {"userData", KrCore::FileUtils::UserDataDir},
                                            {"desktop", KrCore::FileUtils::DesktopDir}};

duk_ret_t print(CallFrame& frame) {
    const duk_idx_t count = duk_get_top(frame.context);
    for (duk_idx_t i = 0; i < count; ++i)
        duk_to_string(frame.context, i);
    for (duk_idx_t i = 0; i < count; ++i) {
        duk_size_t size = 0;
        const char* bytes = duk_get_lstring(frame.context, i, &size);
        const std::string text = TextBridge::toUtf8(std::string_view(bytes, size));
        std::fwrite(text.data(), 1, text.size(), stdout);
        std::fputc(i + 1 < count ? ' ' : '\n', stdout);
    }
    if (count == 0) std::fputc('\n', stdout);
    std::fflush(stdout);
    return 0;
}

duk_ret_t readln(CallFrame& frame) {
    {
        std::string line;
        if (readLine(stdin, line)) {
            TextBridge::decode(line, frame.text);
        } else {
            frame.value.setNull();
        }
    }
    if (frame.value.isNull()) {
        duk_push_null(frame.context);
    } else {
        TextBridge::push(frame.context, frame.text);
    }
    return 1;
}

duk_ret_t gc(CallFrame& frame) {
    frame.engine.rings().collect(frame);
    return 0;
}

void putNumber(duk_context* context, const char* name, double number) {
    duk_push_number(context, number);
    duk_put_prop_string(context, -2, name);
}

duk_ret_t heapStats(CallFrame& frame) {
    int blocks = 0;
    int bytes = 0;
    KrCore::Heap::getMemoryStatistics(blocks, bytes);
    const ScriptHeap& heap = frame.engine.heap();
    const auto scriptBytes = static_cast<double>(heap.bytes());
    const auto scriptBlocks = static_cast<double>(heap.blocks());
    const auto liveObjects = static_cast<double>(frame.engine.objects().count());
    duk_push_object(frame.context);
    putNumber(frame.context, "scriptBytes", scriptBytes);
    putNumber(frame.context, "scriptBlocks", scriptBlocks);
    putNumber(frame.context, "libraryBytes", bytes);
    putNumber(frame.context, "libraryBlocks", blocks);
    putNumber(frame.context, "liveObjects", liveObjects);
    return 1;
}

template <NativeBody body>
void define(duk_context* context, const char* name, duk_idx_t argumentCount) {
    duk_push_c_function(
        context, [](duk_context* inside) { return runNative(inside, body); }, argumentCount);
    duk_put_global_string(context, name);
}

duk_ret_t getSpecialFolder(CallFrame& frame) {
    FolderObject::findSpecial(duk_get_current_magic(frame.context), frame.value);
    frame.engine.values().push(frame, frame.value);
    return 1;
}

duk_ret_t setCurrentFolder(CallFrame& frame) {
    frame.engine.values().read(frame, 0, frame.value);
    const int code = FolderObject::setCurrent(frame.value);
    return code == KrCore::ErrorCode::Ok ? 0 : frame.engine.errors().raise(frame, code);
}

/// `Folder.temp` and the like: properties of the constructor that are asked for each time. Only the
/// current folder can be set.
void defineSpecialFolder(duk_context* context, const char* name, int kind) {
    duk_get_global_literal(context, "Folder");
    const duk_idx_t constructor = duk_get_top_index(context);
    duk_push_string(context, name);
    duk_push_c_function(
        context, [](duk_context* inside) { return runNative(inside, getSpecialFolder); }, 0);
    duk_set_magic(context, -1, kind);
    duk_uint_t parts = DUK_DEFPROP_HAVE_GETTER | DUK_DEFPROP_SET_ENUMERABLE;
    if (kind == currentFolder) {
        duk_push_c_function(
            context, [](duk_context* inside) { return runNative(inside, setCurrentFolder); }, 1);
        parts |= DUK_DEFPROP_HAVE_SETTER;
    }
    duk_def_prop(context, constructor, parts);
    duk_pop(context);
}

/// Finalizers of the script's own would run while the table of live objects is not up to date, and
/// strings made of raw bytes can be the hidden keys under which script objects keep their holdings.
void removeDangers(duk_context* context) {
    duk_push_global_object(context);
    duk_del_prop_literal(context, -1, "Duktape");
    duk_get_prop_literal(context, -1, "String");
    duk_del_prop_literal(context, -1, "fromBufferRaw");
    duk_pop_2(context);
}

/// `XML.parse(text)` is the same as `new XML(text)`.
void defineParse(duk_context* context) {
    duk_get_global_string(context, "XML");
    duk_dup_top(context);
    duk_put_prop_string(context, -2, "parse");
    duk_pop(context);
}

} // namespace

void install(CallFrame& frame) {
    removeDangers(frame.context);
    define<print>(frame.context, "print", DUK_VARARGS);
    define<readln>(frame.context, "readln", 0);
    define<gc>(frame.context, "gc", 0);
    define<heapStats>(frame.context, "heapStats", 0);
    for (const char* className : Hosts::classNames) {
        frame.engine.objects().defineConstructor(frame, className);
    }
    defineParse(frame.context);
    for (const SpecialFolder& folder : specialFolders)
        defineSpecialFolder(frame.context, folder.name, folder.kind);
}

} // namespace krhost::Globals
