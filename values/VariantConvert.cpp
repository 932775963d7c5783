#include "values/NumberScan.h"
#include "values/NumberText.h"
#include "values/ObjectIdentity.h"

#include <krcore/containers/Array.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/LiveObject.h>
#include <krcore/regexp/RegExp.h>
#include <krcore/values/JSObject.h>
#include <krcore/values/Point.h>
#include <krcore/values/Rect.h>
#include <krcore/values/UnitValue.h>

#include <cmath>
#include <limits>
#include <mutex>

namespace KrCore {

namespace {

/// Objects may give each other as their values; nobody follows them further than this.
constexpr int maximalPrimitiveSteps = 16;

template <class Integer>
Integer toInteger(double value) {
    constexpr Integer lowest = std::numeric_limits<Integer>::min();
    constexpr Integer highest = std::numeric_limits<Integer>::max();
    if (std::isnan(value)) return 0;
    if (value <= double(lowest)) return lowest;
    if (value >= double(highest)) return highest;
    return static_cast<Integer>(value);
}

/// Whether truncation to the integer type gives the number back.
template <class Integer>
bool isInteger(double value) {
    return value >= double(std::numeric_limits<Integer>::min()) &&
           value <= double(std::numeric_limits<Integer>::max()) &&
           double(static_cast<Integer>(value)) == value;
}

template <class Number>
int checkRange(double value, Number minimum, Number maximum) {
    if (std::isnan(value)) return ErrorCode::TypeMismatch;
    if (std::is_integral_v<Number> && std::trunc(value) != value) return ErrorCode::TypeMismatch;
    const bool isInside = value >= double(minimum) && value <= double(maximum);
    return isInside ? ErrorCode::Ok : ErrorCode::OutOfRange;
}

/// A copy, as an element may be an object that changes the variant when it is asked for its number.
/// Empty for other kinds.
Array elementsOf(const Variant& value) {
    return value.getArray() ? Array(*value.getArray()) : Array();
}

double coordinate(const Array& array, unsigned int index) {
    const Variant* element = array.get(index);
    return element ? element->getInteger() : 0;
}

template <class Scan>
double scanText(const String& text, String* rest, Scan&& scan) {
    NumberScan scanner(text);
    const double value = scan(scanner);
    if (rest) *rest = text.substr(scanner.position());
    return value;
}

} // namespace

// Numbers.

void Variant::classify() const {
    const double value = payload_.number;
    int found = NumberKnown;
    if (std::isnan(value)) {
        found |= NaN;
    } else if (std::isinf(value)) {
        found |= value > 0 ? PlusInfinity : MinusInfinity;
    } else {
        found |= Finite;
        if (value == 0 && std::signbit(value)) found |= MinusZero;
        if (KrCore::isInteger<std::int32_t>(value)) found |= Integer;
        if (KrCore::isInteger<std::uint32_t>(value)) found |= UnsignedInteger;
    }
    attributes_ = static_cast<unsigned short>(attributes_ | found);
}

bool Variant::getBool() const {
    switch (type_) {
    case VariantType::Bool:
        return payload_.boolean;
    case VariantType::Number:
        return payload_.number != 0 && !std::isnan(payload_.number);
    case VariantType::String:
        return !text_->isEmpty();
    case VariantType::Object:
    case VariantType::LiveObject:
        return true;
    case VariantType::UnitValue:
        return payload_.unitValue->getValue() != 0;
    case VariantType::RegExp:
        return payload_.regExp->getPattern() == "true";
    case VariantType::Undefined:
    case VariantType::Null:
    case VariantType::Point:
    case VariantType::Rect:
    case VariantType::Array:
    case VariantType::FileSpec:
        break;
    }
    // Kept: all these are true if their text is "true", which only a pattern can be (held by
    // VariantConvert.TakesOnlyTheTextTrueForTrue).
    return false;
}

double Variant::getDouble() const {
    if (type_ == VariantType::Number) return payload_.number;
    Variant primitive;
    const Variant* value = this;
    for (int step = 0; step < maximalPrimitiveSteps; ++step) {
        const bool isPrimitive = value->type_ != VariantType::LiveObject && !value->getObjectData();
        if (isPrimitive) return value->ownNumber();
        Variant next;
        if (!value->getPrimitive(next)) break;
        primitive = std::move(next);
        value = &primitive;
    }
    return std::numeric_limits<double>::quiet_NaN();
}

/// The number of a value that is no object with a value of its own.
double Variant::ownNumber() const {
    switch (type_) {
    case VariantType::Null:
        return 0;
    case VariantType::Bool:
        return payload_.boolean ? 1 : 0;
    case VariantType::Number:
        return payload_.number;
    case VariantType::String:
        return NumberScan(*text_).scanDouble(TrailingText::AfterBlank);
    case VariantType::Object:
        return payload_.identity->id;
    case VariantType::UnitValue:
        return payload_.unitValue->getValue();
    case VariantType::Undefined:
    case VariantType::LiveObject:
    case VariantType::Point:
    case VariantType::Rect:
    case VariantType::Array:
    case VariantType::FileSpec:
    case VariantType::RegExp:
        break;
    }
    return std::numeric_limits<double>::quiet_NaN();
}

/// Asks an object for its value. The call may change this variant, so the object is held.
bool Variant::getPrimitive(Variant& result) const {
    if (const JSObject* object = getJSObject()) return object->defaultValue(result) == 0;
    const InterfacePtr<LiveObject> object(getLiveObject());
    if (!object) return false;
    const std::lock_guard<const Lockable> guard(*object);
    return object->valueOf(result) == 0;
}

int Variant::getInteger() const { return toInteger<std::int32_t>(getDouble()); }

int Variant::getInteger(int minimum, int maximum) const {
    const int value = getInteger();
    if (value < minimum) return minimum;
    return value > maximum ? maximum : value;
}

unsigned int Variant::getUInteger() const { return toInteger<std::uint32_t>(getDouble()); }

// Text.

const String& Variant::getString() const {
    if (type_ == VariantType::String) return *text_;
    // What objects and arrays hold can change behind the cache; their text is formed each time.
    if (isPlain()) {
        if (!(attributes_ & TextValid)) {
            formText(textSlot());
            attributes_ |= TextValid;
        }
        return *text_;
    }
    String text;
    formText(text);
    // A script that was called for it may have given this variant a value whose text is kept.
    if (type_ <= VariantType::String) return getString();
    String& slot = textSlot();
    slot = std::move(text);
    return slot;
}

const String& Variant::getString(int radix) const {
    return getString(radix, NumberText::defaultPrecision);
}

const String& Variant::getString(int radix, int precision) const {
    const bool isDecimal = radix == 10 || radix == 0;
    const bool isDefault = isDecimal && (precision == NumberText::defaultPrecision || isInteger());
    if (type_ != VariantType::Number || isDefault) return getString();
    attributes_ &= static_cast<unsigned short>(~TextValid);
    String& slot = textSlot();
    NumberText(payload_.number, radix, precision).assignTo(slot);
    return slot;
}

void Variant::toString(String& text) const {
    if (type_ == VariantType::String || (isPlain() && (attributes_ & TextValid))) {
        text = *text_;
    } else {
        formText(text);
    }
}

void Variant::formText(String& text) const {
    switch (type_) {
    case VariantType::Undefined:
        text = "undefined";
        break;
    case VariantType::Null:
        text = "null";
        break;
    case VariantType::Bool:
        text = payload_.boolean ? "true" : "false";
        break;
    case VariantType::Number:
        if (const double value = payload_.number; KrCore::isInteger<std::int32_t>(value)) {
            NumberText(static_cast<std::int32_t>(value)).assignTo(text);
        } else {
            NumberText(value, 10).assignTo(text);
        }
        break;
    case VariantType::String:
        text = *text_;
        break;
    case VariantType::Object:
    case VariantType::LiveObject:
        formObjectText(text);
        break;
    case VariantType::Point:
        text.print("%ld:%ld", toInteger<std::int32_t>(payload_.point->x),
                   toInteger<std::int32_t>(payload_.point->y));
        break;
    case VariantType::Rect:
        text.print("%ld:%ld-%ld:%ld", toInteger<std::int32_t>(payload_.rect->left),
                   toInteger<std::int32_t>(payload_.rect->top),
                   toInteger<std::int32_t>(payload_.rect->right),
                   toInteger<std::int32_t>(payload_.rect->bottom));
        break;
    case VariantType::Array: {
        // A share of it: an element's text may come from a script that changes this variant.
        const Array array = payload_.array->share();
        array.toString(text);
        text.insert("[", 0);
        text.append(']');
        break;
    }
    case VariantType::UnitValue:
        payload_.unitValue->toString(text);
        break;
    case VariantType::FileSpec:
        text = "[object File]";
        break;
    case VariantType::RegExp:
        text = payload_.regExp->getPattern();
        break;
    }
}

void Variant::formObjectText(String& text) const {
    if (type_ == VariantType::LiveObject) {
        const InterfacePtr<LiveObject> object(payload_.liveObject);
        const std::lock_guard<const Lockable> guard(*object);
        if (object->toString(text) != 0) text.erase();
        return;
    }
    const String className(payload_.identity->className);
    const JSObject* object = getJSObject();
    if (object && object->toString(text) == 0) return;
    text = "[object ";
    text.append(className);
    text.append(']');
}

// Change of kind.

int Variant::convert(VariantType type) {
    if (type == type_) return ErrorCode::Ok;
    switch (type) {
    case VariantType::Undefined:
        erase();
        return ErrorCode::Ok;
    case VariantType::Null:
        setNull();
        return ErrorCode::Ok;
    case VariantType::Bool:
        setBool(getBool());
        return ErrorCode::Ok;
    case VariantType::Number:
        setDouble(getDouble());
        return ErrorCode::Ok;
    case VariantType::String:
        setString(getString());
        return ErrorCode::Ok;
    case VariantType::Point: {
        const Array array = elementsOf(*this);
        setPoint(Point{coordinate(array, 0), coordinate(array, 1)});
        return ErrorCode::Ok;
    }
    case VariantType::Rect: {
        const Array array = elementsOf(*this);
        setRect(Rect{coordinate(array, 0), coordinate(array, 1), coordinate(array, 2),
                     coordinate(array, 3)});
        return ErrorCode::Ok;
    }
    case VariantType::Array:
        convertToArray();
        return ErrorCode::Ok;
    case VariantType::Object:
    case VariantType::LiveObject:
    case VariantType::FileSpec:
    case VariantType::RegExp:
    case VariantType::UnitValue:
        break;
    }
    return ErrorCode::CannotConvert;
}

void Variant::convertToArray() {
    Array array;
    if (const Point* point = getPoint()) {
        array += point->x;
        array += point->y;
    } else if (const Rect* rect = getRect()) {
        array += rect->left;
        array += rect->top;
        array += rect->right;
        array += rect->bottom;
    } else {
        array += *this;
    }
    setArray(array);
}

int Variant::validate(int minimum, int maximum) const {
    return checkRange(getDouble(), minimum, maximum);
}

int Variant::validate(unsigned int minimum, unsigned int maximum) const {
    return checkRange(getDouble(), minimum, maximum);
}

int Variant::validate(double minimum, double maximum) const {
    return checkRange(getDouble(), minimum, maximum);
}

int Variant::validate(VariantType type) const {
    return type == type_ ? ErrorCode::Ok : ErrorCode::TypeMismatch;
}

// Scanning.

double Variant::scanDouble(const String& text, int flags, String* rest) {
    return scanText(text, rest, [flags](NumberScan& scanner) {
        return scanner.scanDouble(trailingTextOf(flags));
    });
}

double Variant::scanInteger(const String& text, int radix, int flags, String* rest) {
    return scanText(text, rest, [radix, flags](NumberScan& scanner) {
        return scanner.scanInteger(radix, trailingTextOf(flags));
    });
}

} // namespace KrCore
