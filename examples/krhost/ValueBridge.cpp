#include "ValueBridge.h"

#include "ScriptEngine.h"
#include "ScriptObject.h"
#include "TextBridge.h"
#include "hosts/RegExpObject.h"

#include <krcore/values/Point.h>
#include <krcore/values/Rect.h>

namespace krhost {

using namespace KrCore;

namespace {

/// Longer arrays are read by their defined elements instead of index by index.
constexpr unsigned denseLength = 65536;

/// The number of own properties that are listed, at most `limit`.
int countProperties(duk_context* context, duk_idx_t index, int limit) {
    int count = 0;
    duk_enum(context, index, DUK_ENUM_OWN_PROPERTIES_ONLY);
    while (count < limit && duk_next(context, -1, 0)) {
        ++count;
        duk_pop(context);
    }
    duk_pop(context);
    return count;
}

template <int count>
bool readNumbers(duk_context* context, duk_idx_t index, const char* const (&names)[count],
                 double (&numbers)[count]) {
    for (int i = 0; i < count; ++i) {
        duk_get_prop_string(context, index, names[i]);
        const bool isNumber = duk_is_number(context, -1);
        numbers[i] = isNumber ? duk_get_number(context, -1) : 0;
        duk_pop(context);
        if (!isNumber) return false;
    }
    return true;
}

template <int count>
void pushNumbers(duk_context* context, const char* const (&names)[count],
                 const double (&numbers)[count]) {
    duk_push_object(context);
    for (int i = 0; i < count; ++i) {
        duk_push_number(context, numbers[i]);
        duk_put_prop_string(context, -2, names[i]);
    }
}

} // namespace

void ValueBridge::readArguments(CallFrame& frame, duk_idx_t first) {
    const duk_idx_t top = duk_get_top(frame.context);
    frame.arguments.setLength(static_cast<unsigned>(top - first));
    for (duk_idx_t i = first; i < top; ++i) {
        read(frame, i, frame.arguments.safeGet(static_cast<unsigned>(i - first)));
    }
}

void ValueBridge::readValue(CallFrame& frame, duk_idx_t index, Variant& value, int depth) {
    duk_context* context = frame.context;
    switch (duk_get_type(context, index)) {
    case DUK_TYPE_NONE:
    case DUK_TYPE_UNDEFINED:
        value.erase();
        return;
    case DUK_TYPE_NULL:
        value.setNull();
        return;
    case DUK_TYPE_BOOLEAN:
        value.setBool(duk_get_boolean(context, index) != 0);
        return;
    case DUK_TYPE_NUMBER:
        value.setDouble(duk_get_number(context, index));
        return;
    case DUK_TYPE_STRING:
        if (duk_is_symbol(context, index)) break;
        readText(frame, index, value);
        return;
    case DUK_TYPE_OBJECT:
        readObject(frame, index, value, depth);
        return;
    default:
        break;
    }
    engine_.errors().raise(frame, ErrorCode::CannotConvert);
}

void ValueBridge::readText(CallFrame& frame, duk_idx_t index, Variant& value) {
    if (!longText_.read(frame.context, index, frame.text)) {
        TextBridge::read(frame.context, index, frame.text);
        longText_.remember(frame.context, index, frame.text);
    }
    value.setString(frame.text);
}

void ValueBridge::pushText(CallFrame& frame, const String& text) {
    if (longText_.push(frame.context, text)) return;
    TextBridge::push(frame.context, text);
    longText_.remember(frame.context, -1, text);
}

void ValueBridge::readObject(CallFrame& frame, duk_idx_t index, Variant& value, int depth) {
    duk_context* context = frame.context;
    index = duk_normalize_index(context, index);
    if (LiveObject* object = engine_.objects().find(context, index)) {
        const auto* regExp = dynamic_cast<const RegExpObject*>(object);
        if (regExp) {
            value.setRegExp(regExp->expression());
        } else {
            value.setLiveObject(object);
        }
    } else if (duk_is_array(context, index)) {
        readArray(frame, index, value, depth);
    } else if (!engine_.objects().readCallableProperty(frame, index, value) &&
               !readCoordinates(frame, index, value)) {
        readScriptObject(frame, index, value);
    }
}

void ValueBridge::refuseDepth(CallFrame& frame, int depth) {
    if (depth < maxArrayDepth) return;
    engine_.errors().raise(frame, ErrorCode::OutOfRange, "An array more than 100 levels deep");
}

void ValueBridge::readArray(CallFrame& frame, duk_idx_t index, Variant& value, int depth) {
    duk_context* context = frame.context;
    refuseDepth(frame, depth);
    duk_require_stack(context, 8);
    const auto length = static_cast<unsigned>(duk_get_length(context, index));
    value.setArray(Array(length));
    Array& array = *value.getArray();
    if (length <= denseLength) {
        for (unsigned i = 0; i < length; ++i) {
            if (duk_get_prop_index(context, index, i)) {
                readValue(frame, -1, array.safeGet(i), depth + 1);
            }
            duk_pop(context);
        }
        return;
    }
    duk_enum(context, index, DUK_ENUM_ARRAY_INDICES_ONLY | DUK_ENUM_OWN_PROPERTIES_ONLY);
    while (duk_next(context, -1, 1)) {
        const unsigned i = duk_to_uint32(context, -2);
        if (i < length) readValue(frame, -1, array.safeGet(i), depth + 1);
        duk_pop_2(context);
    }
    duk_pop(context);
}

bool ValueBridge::readCoordinates(CallFrame& frame, duk_idx_t index, Variant& value) {
    duk_context* context = frame.context;
    if (duk_is_function(context, index)) return false;
    const int count = countProperties(context, index, 5);
    if (double at[2]; count == 2 && readNumbers(context, index, pointNames, at)) {
        value.setPoint(Point(at[0], at[1]));
        return true;
    }
    if (double edge[4]; count == 4 && readNumbers(context, index, rectNames, edge)) {
        value.setRect(Rect(edge[0], edge[1], edge[2], edge[3]));
        return true;
    }
    return false;
}

void ValueBridge::readScriptObject(CallFrame& frame, duk_idx_t index, Variant& value) {
    void* object = duk_get_heapptr(frame.context, index);
    if (const auto known = engine_.scriptObjects().find(object);
        known != engine_.scriptObjects().end()) {
        value.setLiveObject(known->second);
        return;
    }
    auto* made = new ScriptObject(engine_, object, duk_is_function(frame.context, index) != 0);
    value.setLiveObject(made);
    made->release(); // the value holds it now, also when keeping it fails
    made->keep(frame.context, index);
}

void ValueBridge::pushValue(CallFrame& frame, const Variant& value, int depth) {
    duk_context* context = frame.context;
    switch (value.getType()) {
    case VariantType::Undefined:
        duk_push_undefined(context);
        return;
    case VariantType::Null:
        duk_push_null(context);
        return;
    case VariantType::Bool:
        duk_push_boolean(context, value.getBool());
        return;
    case VariantType::Number:
        duk_push_number(context, value.getDouble());
        return;
    case VariantType::LiveObject:
        engine_.objects().push(frame, *value.getLiveObject());
        return;
    case VariantType::Array:
        pushArray(frame, *value.getArray(), depth);
        return;
    case VariantType::Point: {
        const Point& point = *value.getPoint();
        pushNumbers(context, pointNames, {point.x, point.y});
        return;
    }
    case VariantType::Rect: {
        const Rect& rect = *value.getRect();
        pushNumbers(context, rectNames, {rect.left, rect.top, rect.right, rect.bottom});
        return;
    }
    case VariantType::String:
    case VariantType::UnitValue:
        pushText(frame, value.getString());
        return;
    case VariantType::RegExp:
        pushRegExp(frame, *value.getRegExp());
        return;
    case VariantType::Object:
    case VariantType::FileSpec:
        break;
    }
    engine_.errors().raise(frame, ErrorCode::CannotConvert);
}

void ValueBridge::pushRegExp(CallFrame& frame, const RegExp& expression) {
    frame.made = InterfacePtr<LiveObject>::adopt(new RegExpObject(expression));
    engine_.objects().push(frame, *frame.made);
}

void ValueBridge::pushArray(CallFrame& frame, const Array& array, int depth) {
    duk_context* context = frame.context;
    refuseDepth(frame, depth);
    const unsigned length = array.length();
    if (length > maxArrayLength) {
        engine_.errors().raise(frame, ErrorCode::OutOfRange, "An array of so many elements");
    }
    duk_require_stack(context, 8);
    duk_push_array(context);
    duk_set_length(context, -1, length);
    for (unsigned i = 0; i < length; ++i) {
        if (!array.isDefined(i)) continue;
        pushValue(frame, *array.get(i), depth + 1);
        duk_put_prop_index(context, -2, i);
    }
}

} // namespace krhost
