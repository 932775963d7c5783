#include "Globals.h"

#include "LineReader.h"
#include "ScriptEngine.h"
#include "TextBridge.h"
#include "hosts/FolderObject.h"
#include "hosts/Hosts.h"

#include <krcore/foundation/Heap.h>
#include <krcore/live/LivePropertyManager.h>

#include <cstdio>

namespace krhost::Globals {

namespace {

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
    frame.engine.values().forgetText(frame);
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

duk_ret_t describe(CallFrame& frame) {
    const KrCore::LiveObject* object = frame.engine.objects().find(frame.context, 0);
    if (!object) {
        return frame.engine.errors().raise(frame, KrCore::ErrorCode::BadArgument,
                                           "of describe, which is no live object");
    }
    const int code = frame.engine.calls().describeClass(*object, frame.text);
    if (code != KrCore::ErrorCode::Ok) return frame.engine.errors().raise(frame, code);
    TextBridge::push(frame.context, frame.text);
    return 1;
}

template <NativeBody body>
duk_ret_t native(duk_context* context) {
    return runNative(context, body);
}

struct GlobalFunction {
    const char* name;
    duk_c_function function;
    duk_idx_t argumentCount;
    const char* descriptor; // see `KrCore::TypeInfo::parse`
};

constexpr GlobalFunction functions[] = {
    {"print", native<print>, DUK_VARARGS,
     "undefined\tWrites the texts of the values with blanks between and a line end,"
     "...values:any\tThe values"},
    {"readln", native<readln>, 0,
     "string;;;null\tReads a line of the standard input without its end; null when none is left"},
    {"gc", native<gc>, 0, "undefined\tCollects at once what the script cannot reach any more"},
    {"heapStats", native<heapStats>, 0,
     "any\tTells what is in use\tThe numbers scriptBytes; scriptBlocks; libraryBytes; "
     "libraryBlocks and liveObjects; the last counts the live objects that scripts hold."},
    {"describe", native<describe>, 1,
     "string\tThe description of a live object's class as XML,object:Object\tThe object"}};

constexpr const char* argumentsDescriptor =
    "string;;;;array\tThe words behind the script on the command line";

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
void defineSpecialFolder(duk_context* context, const KrCore::LivePropertyInfo& folder) {
    duk_get_global_literal(context, "Folder");
    const duk_idx_t constructor = duk_get_top_index(context);
    duk_push_string(context, folder.name);
    duk_push_c_function(context, native<getSpecialFolder>, 0);
    duk_set_magic(context, -1, folder.id);
    duk_uint_t parts = DUK_DEFPROP_HAVE_GETTER | DUK_DEFPROP_SET_ENUMERABLE;
    if (folder.id == FolderObject::currentKind) {
        duk_push_c_function(context, native<setCurrentFolder>, 1);
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

void defineClass(CallFrame& frame, const Hosts::HostClass& hostClass) {
    if (hostClass.role == Hosts::Role::Constructed) {
        frame.engine.objects().defineConstructor(frame, hostClass.name);
    } else if (hostClass.role == Hosts::Role::Constants) {
        frame.name = hostClass.name;
        frame.engine.objects().push(frame, *Hosts::findSample(frame.name));
        duk_put_global_string(frame.context, hostClass.name);
    }
}

} // namespace

void install(CallFrame& frame) {
    duk_context* context = frame.context;
    removeDangers(context);
    for (const GlobalFunction& global : functions) {
        duk_push_c_function(context, global.function, global.argumentCount);
        duk_put_global_string(context, global.name);
    }
    for (const Hosts::HostClass& hostClass : Hosts::classes)
        defineClass(frame, hostClass);
    defineParse(context);
    for (const auto* folder = FolderObject::specialFolders; folder->name; ++folder)
        defineSpecialFolder(context, *folder);
}

void declare(KrCore::LivePropertyManager& manager) {
    int id = 0;
    for (const GlobalFunction& global : functions) {
        manager.registerProperty(global.name, ++id, int(KrCore::InfoType::Method),
                                 global.descriptor);
    }
    manager.registerProperty("arguments", ++id, int(KrCore::InfoType::ReadWrite),
                             argumentsDescriptor);
}

} // namespace krhost::Globals
