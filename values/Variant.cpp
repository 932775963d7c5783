#include <krcore/values/Variant.h>

#include <krcore/containers/Array.h>
#include <krcore/text/String.h>

#include <limits>

namespace KrCore {

// Exported, for callers on Windows that take its address.
constexpr int Variant::unordered;

// Constructors. Those of kinds that own something first become `Undefined`, so that a setter that
// throws leaves nothing behind: the delegated constructor has run, and the destructor follows.

Variant::Variant(const Variant* other) : Variant() {
    if (other) *this = *other;
}

Variant::Variant(const char* text) : Variant() { setString(text); }

Variant::Variant(const char* text, const Encoder* encoder) : Variant() { setString(text, encoder); }

Variant::Variant(const unsigned short* text) : Variant() { setString(text); }

Variant::Variant(const char16_t* text) : Variant() { setString(text); }

Variant::Variant(const String& text) : text_(new String(text)), type_(VariantType::String) {}

Variant::Variant(const Point& point) : Variant() { setPoint(point); }

Variant::Variant(const Rect& rect) : Variant() { setRect(rect); }

Variant::Variant(const Array& array) : type_(VariantType::Array) {
    payload_.array = new Array(array); // No search: a new variant is no element yet.
}

Variant::Variant(const FileSpec& file) : Variant() { setFileSpec(file); }
Variant::Variant(const RegExp& expression) : Variant() { setRegExp(expression); }
Variant::Variant(const UnitValue& value) : Variant() { setUnitValue(value); }

Variant::Variant(LiveObject& object, int info) : Variant() { setLiveObject(object, info); }

Variant::Variant(LiveObject* object, int info) : Variant() { setLiveObject(object, info); }

Variant::Variant(int id, const String& className, Root* data) : Variant() {
    setObject(id, className, data);
}

void Variant::copyOwned(const Variant& other) {
    if (other.type_ == VariantType::String) {
        text_ = new String(*other.text_);
        type_ = VariantType::String;
    } else if (other.type_ == VariantType::Array) {
        payload_.array = new Array(*other.payload_.array);
        type_ = VariantType::Array;
    } else {
        install(other.copyContentFor(*this));
    }
}

void Variant::destroy() noexcept {
    const Content oldContent = content();
    type_ = VariantType::Undefined;
    delete std::exchange(text_, nullptr);
    destroyContent(oldContent);
}

// Assignment.

Variant& Variant::operator=(const Variant& other) {
    if (this == &other) return *this;
    if (other.isPlain()) {
        const unsigned short known = other.attributes_ & NumberAttributes;
        setPlain(other.type_, other.payload_);
        attributes_ |= known;
    } else if (other.type_ == VariantType::String) {
        setString(*other.text_);
    } else {
        install(other.copyContentFor(*this));
    }
    return *this;
}

// NOLINTNEXTLINE(performance-noexcept-move-constructor): the copy may fail.
Variant& Variant::operator=(Variant&& other) {
    if (this == &other) return *this;
    const bool isWithin = other.type_ == VariantType::Array && other.payload_.array->holds(this);
    if (other.isPlain() || isWithin) return *this = std::as_const(other);
    const Content taken = other.content();
    if (taken.type == VariantType::String) {
        const Content oldContent = content();
        std::swap(text_, other.text_);
        if (other.text_) other.text_->erase();
        type_ = std::exchange(other.type_, VariantType::Undefined);
        attributes_ &= Unassigned;
        destroyContent(oldContent);
    } else {
        other.type_ = VariantType::Undefined;
        install(taken);
    }
    return *this;
}

Variant& Variant::operator=(const Variant* other) {
    if (other) return *this = *other;
    erase();
    return *this;
}

Variant& Variant::operator=(bool value) {
    setBool(value);
    return *this;
}

Variant& Variant::operator=(double value) {
    setDouble(value);
    return *this;
}

Variant& Variant::operator=(const char* text) {
    setString(text);
    return *this;
}

Variant& Variant::operator=(const unsigned short* text) {
    setString(text);
    return *this;
}

Variant& Variant::operator=(const char16_t* text) {
    setString(text);
    return *this;
}

Variant& Variant::operator=(const String& text) {
    setString(text);
    return *this;
}

Variant& Variant::operator=(const Point& point) {
    setPoint(point);
    return *this;
}

Variant& Variant::operator=(const Rect& rect) {
    setRect(rect);
    return *this;
}

Variant& Variant::operator=(const Array& array) {
    setArray(array);
    return *this;
}

Variant& Variant::operator=(const FileSpec& file) {
    setFileSpec(file);
    return *this;
}

Variant& Variant::operator=(const RegExp& expression) {
    setRegExp(expression);
    return *this;
}

Variant& Variant::operator=(const UnitValue& value) {
    setUnitValue(value);
    return *this;
}

Variant& Variant::operator=(LiveObject& object) {
    setLiveObject(object);
    return *this;
}

Variant& Variant::operator=(LiveObject* object) {
    setLiveObject(object);
    return *this;
}

// Setters of kinds that own nothing but text.

void Variant::setPlain(VariantType type, Payload payload) noexcept {
    if (type_ > VariantType::Number) return install({type, payload, {}});
    type_ = type;
    payload_ = payload;
    attributes_ &= Unassigned;
}

void Variant::setBool(bool value) { setPlain(VariantType::Bool, {.boolean = value}); }

void Variant::setDouble(double value) { setPlain(VariantType::Number, {.number = value}); }

void Variant::setString(const char* text) {
    String value(text);
    installText(value);
}

void Variant::setString(const char* text, const Encoder* encoder) {
    String value(text, encoder);
    installText(value);
}

void Variant::setString(const unsigned short* text) {
    String value(text);
    installText(value);
}

void Variant::setString(const char16_t* text) {
    String value(text);
    installText(value);
}

void Variant::setString(const String& text) {
    String value(text);
    installText(value);
}

void Variant::setNull() { setPlain(VariantType::Null); }

void Variant::setNaN() { setDouble(std::numeric_limits<double>::quiet_NaN()); }

void Variant::setPosInfinity() { setDouble(std::numeric_limits<double>::infinity()); }

void Variant::setNegInfinity() { setDouble(-std::numeric_limits<double>::infinity()); }

void Variant::setMinus0() { setDouble(-0.0); }

void Variant::erase() { setPlain(VariantType::Undefined); }

} // namespace KrCore
