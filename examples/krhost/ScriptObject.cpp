#include "ScriptObject.h"

#include "ScriptEngine.h"
#include "hosts/ClassProperties.h"

#include <krcore/foundation/InterfacePtr.h>

#include <utility>

namespace krhost {

using namespace KrCore;

namespace {

constexpr LivePropertyInfo functionTable[] = {
    {"call", ScriptObject::callID, int(InfoType::Method), nullptr}, {nullptr, 0, 0, nullptr}};

/// Calls the function at the bottom of what the frame pushes; the arguments come from the host.
struct FunctionCall : CallFrame {
    FunctionCall(const ScriptObject& object, const Array& args)
        : CallFrame(*object.engine()), function(object), given(args) {}
    const ScriptObject& function;
    const Array& given;
};

duk_ret_t callFunction(CallFrame& frame) {
    const auto& call = static_cast<FunctionCall&>(frame);
    const unsigned count = call.given.length();
    if (!duk_check_stack(frame.context, static_cast<duk_idx_t>(count) + 8)) {
        return frame.engine.errors().raise(frame, ErrorCode::StackOverrun);
    }
    call.function.pushScriptObject(frame.context);
    for (unsigned i = 0; i < count; ++i)
        frame.engine.values().push(frame, call.given[i]);
    duk_call(frame.context, static_cast<duk_idx_t>(count));
    frame.engine.values().read(frame, -1, frame.value);
    return 1;
}

duk_ret_t recordThrown(CallFrame& frame) {
    frame.engine.errors().record(frame, -1);
    return 0;
}

} // namespace

ScriptObject::ScriptObject(ScriptEngine& engine, void* object, bool isFunction)
    : LiveObject(isFunction ? "Function" : "Object", false), engine_(&engine), object_(object),
      isFunction_(isFunction) {
    if (isFunction) propertyManager = classProperties<functionTable>();
    engine.scriptObjects().emplace(object, this);
}

ScriptObject::~ScriptObject() {
    if (engine_) engine_->scriptObjects().erase(object_);
}

void ScriptObject::keep(duk_context* context, duk_idx_t index) {
    kept_.keep(engine_->keptValues(), context, index);
}

void ScriptObject::detach() {
    engine_ = nullptr;
    invalidate();
}

void ScriptObject::loseUnlessKept() {
    if (isKept() || !engine_) return;
    engine_->scriptObjects().erase(object_);
    detach();
}

InfoType ScriptObject::getType(int id) {
    return isFunction_ && id == callID ? InfoType::Method : LiveObject::getType(id);
}

int ScriptObject::apply(LiveObject& self, int id, const Array& args, Variant& result,
                        Error* err) const {
    if (!engine_ || !isFunction_ || id != callID) {
        return LiveObject::apply(self, id, args, result, err);
    }
    // The function may drop the last reference to this object.
    const InterfacePtr<const ScriptObject> alive(this);
    int code = ErrorCode::Ok;
    FunctionCall frame(*this, args);
    if (runProtected(frame, callFunction)) {
        result = std::move(frame.value);
    } else {
        result.erase();
        runProtected(frame, recordThrown);
        duk_pop(frame.context);
        code = frame.error.getCode();
        if (code == ErrorCode::Ok) code = ErrorCode::InternalError;
        if (err && err->getCode() == ErrorCode::Ok) *err = frame.error;
    }
    duk_pop(frame.context);
    return code;
}

} // namespace krhost
