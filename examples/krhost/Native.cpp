#include "Native.h"

#include "ErrorBridge.h"
#include "ScriptEngine.h"

#include <new>

namespace krhost {

namespace {

struct Run {
    CallFrame& frame;
    NativeBody body;
    bool outOfMemory = false;
};

duk_ret_t enter(duk_context*, void* data) {
    Run& run = *static_cast<Run*>(data);
    try {
        return run.body(run.frame);
    } catch (const std::bad_alloc&) {
        // A jump from here would leave the exception behind.
        run.outOfMemory = true;
        return 0;
    }
}

duk_ret_t raiseOutOfMemory(CallFrame& frame) {
    frame.error.erase();
    return frame.engine.errors().raise(frame, KrCore::ErrorCode::OutOfMemory);
}

} // namespace

CallFrame::CallFrame(ScriptEngine& owner) : engine(owner), context(owner.context()) {}

bool runProtected(CallFrame& frame, NativeBody body) {
    Run run{frame, body};
    if (duk_safe_call(frame.context, enter, &run, 0, 1) != DUK_EXEC_SUCCESS) return false;
    if (!run.outOfMemory) return true;
    duk_pop(frame.context);
    Run report{frame, raiseOutOfMemory};
    duk_safe_call(frame.context, enter, &report, 0, 1);
    return false;
}

duk_ret_t runNative(duk_context* context, NativeBody body) {
    ScriptEngine& engine = ScriptEngine::of(context);
    bool succeeded;
    {
        CallFrame frame(engine);
        succeeded = runProtected(frame, body);
    }
    engine.releaseDropped();
    return succeeded ? 1 : duk_throw(context);
}

} // namespace krhost
