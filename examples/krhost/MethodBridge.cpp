#include "MethodBridge.h"

#include "ObjectTraps.h"
#include "ScriptEngine.h"

#include <memory>

namespace krhost {

using namespace KrCore;

namespace {

constexpr char methodKey[] = "\xFF"
                             "method";
/// Where the target of a proxy keeps the functions it has made, by name.
constexpr char functionsKey[] = "\xFF"
                                "functions";

constexpr char finalizerName[] = "methodFinalizer";
constexpr char valuePrototypeName[] = "callablePropertyPrototype";

} // namespace

void MethodBridge::install(CallFrame& frame) {
    duk_context* context = frame.context;
    duk_push_heap_stash(context);
    duk_push_c_function(context, finalize, 1);
    duk_put_prop_string(context, -2, finalizerName);

    duk_push_object(context); // between the functions and Function.prototype
    duk_get_global_literal(context, "Function");
    duk_get_prop_literal(context, -1, "prototype");
    duk_set_prototype(context, -3);
    duk_pop(context);
    duk_push_c_function(
        context, [](duk_context* inside) { return runNative(inside, read); }, 0);
    duk_dup_top(context);
    duk_put_prop_literal(context, -3, "valueOf");
    duk_put_prop_literal(context, -2, "toJSON");
    duk_push_c_function(
        context, [](duk_context* inside) { return runNative(inside, readAsText); }, 0);
    duk_put_prop_literal(context, -2, "toString");
    duk_put_prop_string(context, -2, valuePrototypeName);
    duk_pop(context);
}

HeldMethod* MethodBridge::heldMethod(duk_context* context, duk_idx_t index) {
    if (!duk_is_function(context, index)) return nullptr;
    duk_get_prop_literal(context, index, methodKey);
    auto* method = static_cast<HeldMethod*>(duk_get_pointer(context, -1));
    duk_pop(context);
    return method;
}

void MethodBridge::forget(duk_context* context, duk_idx_t object) {
    duk_del_prop_literal(context, object, functionsKey);
}

duk_ret_t MethodBridge::push(CallFrame& frame, duk_idx_t target, duk_idx_t name,
                             const Resolved& property) {
    duk_context* context = frame.context;
    if (!duk_get_prop_literal(context, target, functionsKey)) {
        duk_pop(context);
        duk_push_bare_object(context);
        duk_dup_top(context);
        duk_put_prop_literal(context, target, functionsKey);
    }
    duk_dup(context, name);
    duk_get_prop(context, -2);
    const HeldMethod* known = heldMethod(context, -1);
    if (known && known->property == property) return 1;
    duk_pop(context);
    pushNew(frame, *ObjectTraps::heldObject(context, target)->object, property);
    duk_dup(context, name);
    duk_dup(context, -2);
    duk_put_prop(context, -4);
    return 1;
}

void MethodBridge::pushNew(CallFrame& frame, LiveObject& object, const Resolved& property) {
    duk_context* context = frame.context;
    duk_push_c_function(
        context, [](duk_context* inside) { return runNative(inside, call); }, DUK_VARARGS);
    duk_push_pointer(context, nullptr);
    duk_put_prop_literal(context, -2, methodKey);
    duk_push_heap_stash(context);
    duk_get_prop_string(context, -1, finalizerName);
    duk_set_finalizer(context, -3);
    if (isReadable(property.kind)) {
        duk_get_prop_string(context, -1, valuePrototypeName);
        duk_set_prototype(context, -3);
    }
    duk_pop(context);
    duk_push_pointer(context, std::make_unique<HeldMethod>(object, property).release());
    duk_put_prop_literal(context, -2, methodKey); // is there already, so cannot fail
}

duk_ret_t MethodBridge::finalize(duk_context* context) {
    HeldMethod* method = heldMethod(context, 0);
    if (!method) return 0;
    duk_push_pointer(context, nullptr);
    duk_put_prop_literal(context, 0, methodKey);
    ScriptEngine::of(context).drop(*method);
    return 0;
}

duk_ret_t MethodBridge::call(CallFrame& frame) {
    duk_context* context = frame.context;
    frame.engine.values().readArguments(frame, 0);
    duk_push_this(context);
    duk_push_current_function(context);
    const HeldMethod* method = heldMethod(context, -1);
    if (!method) return frame.engine.errors().raise(frame, ErrorCode::ObjectInvalid);
    LiveObject& object = *method->object;
    const int id = method->property.id;
    LiveObject* self = frame.engine.objects().find(context, -2);
    const int code = frame.engine.calls().call(object, self ? *self : object, id, frame.arguments,
                                               frame.value, &frame.error);
    if (code != ErrorCode::Ok) {
        object.setError(code, id, &frame.error, false);
        return frame.engine.errors().raise(frame);
    }
    frame.engine.values().push(frame, frame.value);
    return 1;
}

duk_ret_t MethodBridge::read(CallFrame& frame) {
    duk_push_this(frame.context);
    if (!frame.engine.objects().readCallableProperty(frame, -1, frame.value)) {
        return frame.engine.errors().raise(frame, ErrorCode::WrongClass, "This method");
    }
    frame.engine.values().push(frame, frame.value);
    return 1;
}

duk_ret_t MethodBridge::readAsText(CallFrame& frame) {
    read(frame);
    duk_to_string(frame.context, -1);
    return 1;
}

} // namespace krhost
