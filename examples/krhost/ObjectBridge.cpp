#include "ObjectBridge.h"

#include "MethodBridge.h"
#include "ObjectTraps.h"
#include "ScriptEngine.h"
#include "ScriptObject.h"
#include "TextBridge.h"

#include <memory>

namespace krhost {

using namespace KrCore;

namespace {

/// Runs the finalizers that are due. A collected proxy is gone before the finalizer of its target
/// has run, so only then does the table tell the truth.
void runDueFinalizers(duk_context* context) {
    duk_push_undefined(context);
    duk_set_top(context, duk_get_top(context) - 1);
}

/// Keeps the value on top of the stack alive under a name and returns its address.
void* stash(duk_context* context, const char* name) {
    duk_push_heap_stash(context);
    duk_dup(context, -2);
    duk_put_prop_string(context, -2, name);
    duk_pop(context);
    return duk_get_heapptr(context, -1);
}

} // namespace

void ObjectBridge::install(CallFrame& frame) {
    duk_context* context = frame.context;
    duk_push_object(context);
    ObjectTraps::defineTraps(context);
    traps_ = stash(context, "traps");
    duk_push_object(context);
    ObjectTraps::definePrototype(context);
    basePrototype_ = stash(context, "basePrototype");
    duk_push_c_function(context, finalize, 1);
    finalizer_ = stash(context, "objectFinalizer");
    duk_push_bare_object(context);
    stash(context, "prototypes");
    duk_pop_n(context, 4);
}

void ObjectBridge::pushPrototype(CallFrame& frame, const String& className) {
    duk_context* context = frame.context;
    if (const auto known = prototypes_.find(className); known != prototypes_.end()) {
        duk_push_heapptr(context, known->second);
        return;
    }
    duk_push_object(context);
    duk_push_heapptr(context, basePrototype_);
    duk_set_prototype(context, -2);
    duk_push_heap_stash(context);
    duk_get_prop_literal(context, -1, "prototypes");
    TextBridge::push(context, className);
    duk_dup(context, -4);
    duk_put_prop(context, -3);
    duk_pop_2(context);
    prototypes_[className] = duk_get_heapptr(context, -1);
}

void ObjectBridge::defineConstructor(CallFrame& frame, const char* className) {
    duk_context* context = frame.context;
    duk_push_c_function(
        context, [](duk_context* inside) { return runNative(inside, construct); }, DUK_VARARGS);
    duk_push_literal(context, "name");
    duk_push_string(context, className);
    duk_def_prop(context, -3, DUK_DEFPROP_HAVE_VALUE | DUK_DEFPROP_FORCE);
    frame.name = className;
    pushPrototype(frame, frame.name);
    duk_dup(context, -2);
    duk_put_prop_literal(context, -2, "constructor");
    duk_put_prop_literal(context, -2, "prototype");
    duk_put_global_string(context, className);
}

duk_ret_t ObjectBridge::construct(CallFrame& frame) {
    duk_context* context = frame.context;
    ScriptEngine& engine = frame.engine;
    engine.values().readArguments(frame, 0);
    duk_push_current_function(context);
    duk_get_prop_literal(context, -1, "name");
    TextBridge::read(context, -1, frame.name);
    LiveObject* made = nullptr;
    if (const int code = engine.calls().create(frame.name, made); code != ErrorCode::Ok) {
        frame.error.push(code, frame.name, nullptr, true);
        return engine.errors().raise(frame);
    }
    frame.value.setLiveObject(made);
    made->release(); // it came with a reference, and the value holds one now
    const int code = engine.calls().initialize(*made, frame.arguments, &frame.error);
    if (code != ErrorCode::Ok) return engine.errors().raise(frame, code);
    engine.objects().push(frame, *made);
    return 1;
}

void ObjectBridge::push(CallFrame& frame, LiveObject& object) {
    runDueFinalizers(frame.context);
    if (const auto known = held_.find(&object); known != held_.end()) {
        duk_push_heapptr(frame.context, known->second->scriptObject);
        return;
    }
    const auto* scriptObject = dynamic_cast<ScriptObject*>(&object);
    if (scriptObject && scriptObject->engine() == &engine_) {
        scriptObject->pushScriptObject(frame.context);
    } else {
        pushNew(frame, object);
    }
}

void ObjectBridge::pushNew(CallFrame& frame, LiveObject& object) {
    duk_context* context = frame.context;
    duk_require_stack(context, 8);
    duk_push_object(context);
    void* target = duk_get_heapptr(context, -1);
    pushPrototype(frame, object.getClassName());
    duk_set_prototype(context, -2);
    duk_push_pointer(context, nullptr);
    duk_put_prop_literal(context, -2, ObjectTraps::heldKey);
    duk_push_heapptr(context, finalizer_);
    duk_set_finalizer(context, -2);
    duk_push_heapptr(context, traps_);
    duk_push_proxy(context, 0);

    auto held = std::make_unique<HeldObject>(object);
    held->scriptObject = duk_get_heapptr(context, -1);
    held_.emplace(&object, held.get());
    duk_push_heapptr(context, target);
    duk_push_pointer(context, held.release());
    duk_put_prop_literal(context, -2, ObjectTraps::heldKey); // is there already, so cannot fail
    duk_pop(context);
}

duk_ret_t ObjectBridge::finalize(duk_context* context) {
    HeldObject* held = ObjectTraps::heldObject(context, 0);
    if (!held) return 0;
    duk_push_pointer(context, nullptr);
    duk_put_prop_literal(context, 0, ObjectTraps::heldKey);
    ScriptEngine& engine = ScriptEngine::of(context);
    engine.objects().held_.erase(held->object.get());
    engine.drop(*held);
    return 0;
}

LiveObject* ObjectBridge::find(duk_context* context, duk_idx_t index) const {
    HeldObject* held = ObjectTraps::heldObject(context, index);
    return held ? held->object.get() : nullptr;
}

bool ObjectBridge::readCallableProperty(CallFrame& frame, duk_idx_t index, Variant& value) {
    const HeldMethod* method = MethodBridge::heldMethod(frame.context, index);
    if (!method || !isReadable(method->property.kind)) return false;
    LiveObject& object = *method->object;
    const int code = engine_.calls().get(object, method->property.id, value, &frame.error);
    if (code != ErrorCode::Ok) engine_.errors().raise(frame, code);
    return true;
}

} // namespace krhost
