#include "ObjectTraps.h"

#include "ElementTraps.h"
#include "MethodBridge.h"
#include "RingCollector.h"
#include "ScriptEngine.h"
#include "TextBridge.h"

namespace krhost {

using namespace KrCore;

namespace {

// The stack of a trap: the target, the name, and for `set` the value.
constexpr duk_idx_t targetIndex = 0;
constexpr duk_idx_t nameIndex = 1;
constexpr duk_idx_t valueIndex = 2;

/// Where the target keeps the names that its holding remembers by their address.
constexpr char namesKey[] = "\xFF"
                            "names";

template <NativeBody body>
duk_ret_t native(duk_context* context) {
    return runNative(context, body);
}

template <NativeBody body>
void define(duk_context* context, const char* name, duk_idx_t argumentCount) {
    duk_push_string(context, name);
    duk_push_c_function(context, native<body>, argumentCount);
    duk_def_prop(context, -3,
                 DUK_DEFPROP_HAVE_VALUE | DUK_DEFPROP_SET_WRITABLE | DUK_DEFPROP_CLEAR_ENUMERABLE |
                     DUK_DEFPROP_SET_CONFIGURABLE);
}

} // namespace

void ObjectTraps::defineTraps(duk_context* context) {
    define<get>(context, "get", 2);
    define<set>(context, "set", 3);
    define<has>(context, "has", 2);
    define<deleteProperty>(context, "deleteProperty", 2);
    define<ownKeys>(context, "ownKeys", 1);
}

void ObjectTraps::definePrototype(duk_context* context) {
    define<toString>(context, "toString", 0);
    define<valueOf>(context, "valueOf", 0);
    define<hasOwnProperty>(context, "hasOwnProperty", 1);
}

HeldObject* ObjectTraps::heldObject(duk_context* context, duk_idx_t index) {
    if (!duk_is_object(context, index)) return nullptr;
    duk_get_prop_literal(context, index, heldKey);
    auto* held = static_cast<HeldObject*>(duk_get_pointer(context, -1));
    duk_pop(context);
    return held;
}

HeldObject& ObjectTraps::target(CallFrame& frame) {
    HeldObject* held = heldObject(frame.context, targetIndex);
    if (!held) frame.engine.errors().raise(frame, ErrorCode::ObjectInvalid);
    return *held;
}

bool ObjectTraps::isSymbol(CallFrame& frame) {
    if (duk_is_symbol(frame.context, nameIndex)) return true;
    duk_to_string(frame.context, nameIndex); // an array index arrives as a number
    return false;
}

/// Asks the object for the name, unless it has told before and its definitions are the same since.
/// An answer that changes the definitions is for now only. `frame.name` is set when the answer is
/// not 0.
int ObjectTraps::resolve(CallFrame& frame, HeldObject& held, Resolved& property) {
    const LiveObject& object = *held.object;
    const void* name = duk_get_heapptr(frame.context, nameIndex);
    const HeldObject::CachedName& cached = held.names[HeldObject::cacheSlot(name)];
    if (cached.name == name && held.stamp == object.getDefinitionStamp()) {
        property = cached.property;
        return ErrorCode::Ok;
    }
    TextBridge::read(frame.context, nameIndex, frame.name);
    const unsigned stamp = object.getDefinitionStamp();
    const int code =
        frame.engine.calls().getIDForName(object, frame.name, property.id, property.kind);
    if (code == ErrorCode::Ok && stamp == object.getDefinitionStamp())
        remember(frame, held, property);
    return code;
}

void ObjectTraps::remember(CallFrame& frame, HeldObject& held, const Resolved& property) {
    duk_context* context = frame.context;
    if (held.stamp != held.object->getDefinitionStamp()) {
        held.names = {};
        held.stamp = held.object->getDefinitionStamp();
    }
    const void* name = duk_get_heapptr(context, nameIndex);
    const unsigned slot = HeldObject::cacheSlot(name);
    held.names[slot] = {};
    if (!duk_get_prop_literal(context, targetIndex, namesKey)) {
        duk_pop(context);
        duk_push_array(context);
        duk_dup_top(context);
        duk_put_prop_literal(context, targetIndex, namesKey);
    }
    duk_dup(context, nameIndex);
    duk_put_prop_index(context, -2, slot);
    duk_pop(context);
    held.names[slot] = {name, property};
}

duk_ret_t ObjectTraps::pushInherited(CallFrame& frame) {
    duk_get_prototype(frame.context, targetIndex);
    duk_dup(frame.context, nameIndex);
    duk_get_prop(frame.context, -2);
    return 1;
}

duk_ret_t ObjectTraps::refuseName(CallFrame& frame, int code) {
    frame.error.push(code, frame.name, nullptr, true);
    return frame.engine.errors().raise(frame);
}

duk_ret_t ObjectTraps::refuse(CallFrame& frame, const HeldObject& held, int id, int code) {
    held.object->setError(code, id, &frame.error, false);
    return frame.engine.errors().raise(frame);
}

duk_ret_t ObjectTraps::get(CallFrame& frame) {
    HeldObject& held = target(frame);
    if (unsigned index = 0; ElementTraps::isElement(frame.context, nameIndex, held, index))
        return ElementTraps::get(frame, held, index);
    if (isSymbol(frame)) {
        duk_dup(frame.context, nameIndex);
        duk_get_prop(frame.context, targetIndex);
        return 1;
    }
    Resolved property;
    int code = resolve(frame, held, property);
    if (code == ErrorCode::NotFound) {
        pushInherited(frame);
        if (!frame.engine.isStrict() || !duk_is_undefined(frame.context, -1)) return 1;
    }
    if (code != ErrorCode::Ok) return refuseName(frame, code);
    if (isCallable(property.kind))
        return MethodBridge::push(frame, targetIndex, nameIndex, property);
    if (!isReadable(property.kind)) {
        return refuse(frame, held, property.id, ErrorCode::UnsupportedProperty);
    }
    code = frame.engine.calls().get(*held.object, property.id, frame.value, &frame.error);
    if (code != ErrorCode::Ok) return refuse(frame, held, property.id, code);
    frame.engine.values().push(frame, frame.value);
    return 1;
}

duk_ret_t ObjectTraps::set(CallFrame& frame) {
    HeldObject& held = target(frame);
    if (unsigned index = 0; ElementTraps::isElement(frame.context, nameIndex, held, index))
        return ElementTraps::set(frame, held, index, valueIndex);
    if (isSymbol(frame)) {
        duk_dup(frame.context, nameIndex);
        duk_dup(frame.context, valueIndex);
        duk_put_prop(frame.context, targetIndex);
        duk_push_true(frame.context);
        return 1;
    }
    frame.engine.values().read(frame, valueIndex, frame.value);
    Resolved property;
    int code = resolve(frame, held, property);
    if (code == ErrorCode::NotFound) {
        code = frame.engine.calls().createIDForName(*held.object, frame.name, property.id);
        property.kind = InfoType::ReadWrite;
    }
    if (code != ErrorCode::Ok) return refuseName(frame, code);
    if (property.kind == InfoType::Method) {
        return refuse(frame, held, property.id, ErrorCode::UnsupportedProperty);
    }
    if (!isWritable(property.kind)) return refuse(frame, held, property.id, ErrorCode::ReadOnly);
    code = frame.engine.calls().put(*held.object, property.id, frame.value, &frame.error);
    if (code != ErrorCode::Ok) return refuse(frame, held, property.id, code);
    RingCollector::note(frame, held, targetIndex, valueIndex, property.id);
    duk_push_true(frame.context);
    return 1;
}

duk_ret_t ObjectTraps::has(CallFrame& frame) {
    duk_context* context = frame.context;
    HeldObject& held = target(frame);
    if (unsigned index = 0; ElementTraps::isElement(context, nameIndex, held, index))
        return ElementTraps::has(frame, held, index);
    if (isSymbol(frame)) {
        duk_dup(context, nameIndex);
        duk_push_boolean(context, duk_has_prop(context, targetIndex));
        return 1;
    }
    Resolved property;
    const int code = resolve(frame, held, property);
    if (code != ErrorCode::Ok && code != ErrorCode::NotFound) return refuseName(frame, code);
    bool found = code == ErrorCode::Ok;
    if (!found) {
        duk_get_prototype(context, targetIndex);
        duk_dup(context, nameIndex);
        found = duk_has_prop(context, -2) != 0;
    }
    duk_push_boolean(context, found);
    return 1;
}

/// False, which the language turns into a TypeError in strict code, for what cannot be deleted.
duk_ret_t ObjectTraps::deleteProperty(CallFrame& frame) {
    bool gone = true;
    HeldObject& held = target(frame);
    if (unsigned index = 0; ElementTraps::isElement(frame.context, nameIndex, held, index))
        return ElementTraps::remove(frame, held, index);
    if (isSymbol(frame)) {
        duk_dup(frame.context, nameIndex);
        duk_del_prop(frame.context, targetIndex);
    } else {
        Resolved property;
        int code = resolve(frame, held, property);
        if (code == ErrorCode::Ok) {
            code = frame.engine.calls().deleteID(*held.object, property.id);
            gone = code == ErrorCode::Ok;
        }
        if (code != ErrorCode::Ok && code != ErrorCode::NotFound) return refuseName(frame, code);
    }
    duk_push_boolean(frame.context, gone);
    return 1;
}

namespace {

/// Takes away what an earlier listing left on the target.
void forgetListing(duk_context* context) {
    duk_enum(context, targetIndex, DUK_ENUM_OWN_PROPERTIES_ONLY);
    while (duk_next(context, -1, 0))
        duk_del_prop(context, targetIndex);
    duk_pop(context);
}

/// Adds the name on top of the stack to the listing below it. The engine lists a name only when the
/// target has a property of that name, so the target gets one; nobody reads it.
void addToListing(duk_context* context, duk_uarridx_t count) {
    duk_dup_top(context);
    duk_def_prop(context, targetIndex, DUK_DEFPROP_SET_WEC); // past any setter of the prototype
    duk_put_prop_index(context, -2, count);
}

duk_uarridx_t listElements(CallFrame& frame, const HeldObject& held) {
    const unsigned length = ElementTraps::lengthToList(frame, held);
    duk_uarridx_t count = 0;
    for (unsigned index = 0; index < length; ++index) {
        if (!ElementTraps::isThere(held, index)) continue;
        if (count == ElementTraps::maxListed) ElementTraps::refuseToList(frame);
        duk_push_uint(frame.context, index);
        duk_to_string(frame.context, -1);
        addToListing(frame.context, count++);
    }
    return count;
}

} // namespace

/// Elements come first, as in the language's own arrays.
duk_ret_t ObjectTraps::ownKeys(CallFrame& frame) {
    duk_context* context = frame.context;
    HeldObject& held = target(frame);
    const int code = frame.engine.calls().enumerate(*held.object, frame.ids);
    if (code != ErrorCode::Ok) return frame.engine.errors().raise(frame, code);
    forgetListing(context);
    duk_push_array(context);
    duk_uarridx_t count = listElements(frame, held);
    for (int i = 0; i < frame.ids.length(); ++i) {
        const int id = static_cast<int>(frame.ids.getData()[i]);
        if (frame.engine.calls().getNameForID(*held.object, id, frame.name) != ErrorCode::Ok) {
            continue;
        }
        TextBridge::push(context, frame.name);
        addToListing(context, count++);
    }
    return 1;
}

LiveObject& ObjectTraps::thisObject(CallFrame& frame) {
    duk_push_this(frame.context);
    LiveObject* object = frame.engine.objects().find(frame.context, -1);
    if (!object) frame.engine.errors().raise(frame, ErrorCode::WrongClass, "This method");
    return *object;
}

duk_ret_t ObjectTraps::toString(CallFrame& frame) {
    const int code = frame.engine.calls().toString(thisObject(frame), frame.text);
    if (code != ErrorCode::Ok) return frame.engine.errors().raise(frame, code);
    TextBridge::push(frame.context, frame.text);
    return 1;
}

/// An object without a value of its own is its own value, as everywhere in the language.
duk_ret_t ObjectTraps::valueOf(CallFrame& frame) {
    const int code = frame.engine.calls().valueOf(thisObject(frame), frame.value);
    if (code != ErrorCode::Ok) return frame.engine.errors().raise(frame, code);
    if (frame.value.isDefined()) frame.engine.values().push(frame, frame.value);
    return 1;
}

duk_ret_t ObjectTraps::hasOwnProperty(CallFrame& frame) {
    duk_to_string(frame.context, 0);
    LiveObject& object = thisObject(frame);
    const HeldObject& held = *heldObject(frame.context, -1);
    if (unsigned index = 0; ElementTraps::isElement(frame.context, 0, held, index))
        return ElementTraps::has(frame, held, index);
    TextBridge::read(frame.context, 0, frame.name);
    Resolved property;
    const int code =
        frame.engine.calls().getIDForName(object, frame.name, property.id, property.kind);
    if (code != ErrorCode::Ok && code != ErrorCode::NotFound) return refuseName(frame, code);
    duk_push_boolean(frame.context, code == ErrorCode::Ok);
    return 1;
}

} // namespace krhost
