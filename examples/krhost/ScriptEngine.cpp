#include "ScriptEngine.h"

#include "Globals.h"
#include "MethodBridge.h"
#include "ScriptObject.h"
#include "TextBridge.h"

#include <cstdio>
#include <new>
#include <utility>

namespace krhost {

using namespace KrCore;

namespace {

/// What `run` hands to its protected half.
struct RunFrame : CallFrame {
    RunFrame(ScriptEngine& owner, const std::string& code, const std::string& fileName)
        : CallFrame(owner), source(code), file(fileName) {}
    const std::string& source;
    const std::string& file;
};

duk_ret_t compileAndRun(CallFrame& frame) {
    const auto& run = static_cast<RunFrame&>(frame);
    duk_push_lstring(frame.context, run.file.data(), run.file.size());
    duk_compile_lstring_filename(frame.context, DUK_COMPILE_SHEBANG, run.source.data(),
                                 run.source.size());
    duk_call(frame.context, 0);
    return 1;
}

/// Pushes a property of the thrown value, or undefined when it cannot be had.
void pushErrorPart(duk_context* context, duk_idx_t error, const char* name) {
    struct Request {
        duk_idx_t error;
        const char* name;
    } request{duk_normalize_index(context, error), name};
    const auto read = [](duk_context* inside, void* data) -> duk_ret_t {
        const auto& wanted = *static_cast<Request*>(data);
        if (!duk_is_error(inside, wanted.error)) return 0;
        duk_get_prop_string(inside, wanted.error, wanted.name);
        return 1;
    };
    if (duk_safe_call(context, read, &request, 0, 1) != DUK_EXEC_SUCCESS) {
        duk_pop(context);
        duk_push_undefined(context);
    }
}

std::string textAt(duk_context* context, duk_idx_t index) {
    duk_size_t size = 0;
    duk_dup(context, index);
    const char* bytes = duk_safe_to_lstring(context, -1, &size);
    const std::string text = TextBridge::toUtf8(std::string_view(bytes, size));
    duk_pop(context);
    return text;
}

/// "a.js:3: " from the position that the thrown error carries; empty when it carries none.
std::string positionOf(duk_context* context, duk_idx_t error) {
    std::string position;
    pushErrorPart(context, error, "fileName");
    pushErrorPart(context, error < 0 ? error - 1 : error, "lineNumber");
    if (duk_is_string(context, -2)) {
        position = textAt(context, -2) + ":";
        if (duk_is_number(context, -1)) position += textAt(context, -1) + ":";
        position += " ";
    }
    duk_pop_2(context);
    return position;
}

} // namespace

ScriptEngine::ScriptEngine(const Settings& settings)
    : settings_(settings), heap_(*this), context_(heap_.createContext()), calls_(settings.trace),
      errors_(*this), values_(*this), objects_(*this), rings_(*this) {
    if (!context_) throw std::bad_alloc();
    install();
}

ScriptEngine::~ScriptEngine() {
    for (const auto& [address, object] : std::exchange(scriptObjects_, {}))
        object->detach();
    keptValues_.detachAll();
    duk_destroy_heap(context_);
    context_ = nullptr;
    releaseDropped();
}

ScriptEngine& ScriptEngine::of(duk_context* context) {
    duk_memory_functions memory;
    duk_get_memory_functions(context, &memory);
    return static_cast<ScriptHeap*>(memory.udata)->engine();
}

void ScriptEngine::install() {
    const auto body = [](CallFrame& frame) -> duk_ret_t {
        frame.engine.keptValues().install(frame.context);
        frame.engine.errors().install(frame);
        frame.engine.objects().install(frame);
        MethodBridge::install(frame);
        Globals::install(frame);
        return 0;
    };
    CallFrame frame(*this);
    if (!runProtected(frame, body)) throw std::bad_alloc();
    duk_pop(context_);
}

bool ScriptEngine::run(const std::string& source, const std::string& file, Echo echo) {
    bool succeeded;
    {
        RunFrame frame(*this, source, file);
        succeeded = runProtected(frame, compileAndRun);
    }
    if (!succeeded) {
        printUncaught(file);
    } else if (echo == Echo::Print && !duk_is_undefined(context_, -1)) {
        std::printf("%s\n", textAt(context_, -1).c_str());
    }
    duk_pop(context_);
    releaseDropped();
    return succeeded;
}

void ScriptEngine::printUncaught(const std::string& file) {
    std::fflush(stdout);
    std::string position = positionOf(context_, -1);
    if (position.empty()) position = file + ": uncaught: "; // anything can be thrown
    std::string line = position + textAt(context_, -1);
    pushErrorPart(context_, -1, "number");
    if (duk_is_number(context_, -1)) line += " (error " + textAt(context_, -1) + ")";
    duk_pop(context_);
    std::fprintf(stderr, "%s\n", line.c_str());
}

void ScriptEngine::setArguments(const std::vector<std::string>& words) {
    CallFrame frame(*this);
    for (const std::string& word : words) {
        TextBridge::decode(word, frame.text);
        frame.arguments += frame.text;
    }
    const auto body = [](CallFrame& inside) -> duk_ret_t {
        inside.value.setArray(inside.arguments);
        inside.engine.values().push(inside, inside.value);
        duk_put_global_literal(inside.context, "arguments");
        return 0;
    };
    if (!runProtected(frame, body)) throw std::bad_alloc();
    duk_pop(context_);
}

void ScriptEngine::drop(Holding& holding) {
    holding.nextDropped = dropped_;
    dropped_ = &holding;
}

void ScriptEngine::releaseDropped() {
    // What is deleted may drop more: the last reference to a script function, say.
    while (dropped_ || (context_ && keptValues_.hasDropped())) {
        if (dropped_) {
            Holding* first = std::exchange(dropped_, dropped_->nextDropped);
            calls_.released(*first->object);
            delete first;
        } else {
            keptValues_.releaseDropped(context_);
        }
    }
}

} // namespace krhost
