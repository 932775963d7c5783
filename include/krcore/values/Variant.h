#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Heap.h>
#include <krcore/values/VariantType.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace KrScript {
class Engine;
}

namespace KrCore {

class Array;
class Encoder;
class Error;
class FileSpec;
class JSObject;
class LiveCollection;
class LiveObject;
class Point;
class RegExp;
class Rect;
class Root;
class String;
class UnitValue;
class Variant;
template <class T>
class InterfacePtr;
template <class T>
class THashTable;

/// Characters: whether 'x' is text or a number has to be said, so a `Variant` refuses them.
template <class T>
concept VariantCharacter = std::same_as<T, char> || std::same_as<T, wchar_t> ||
    std::same_as<T, char8_t> || std::same_as<T, char16_t> || std::same_as<T, char32_t>;

/// Integers that a `Variant` takes as numbers beside `int` and `unsigned int`.
template <class T>
concept VariantInteger = std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, int> &&
                         !std::same_as<T, unsigned int> && !VariantCharacter<T>;

/// Pointers that are none of the kinds a `Variant` knows. Without being refused they would all
/// become `true`.
template <class T>
concept VariantForeignPointer =
    !std::convertible_to<T*, const Variant*> && !std::convertible_to<T*, const char*> &&
    !std::convertible_to<T*, const unsigned short*> && !std::convertible_to<T*, const char16_t*> &&
    !std::convertible_to<T*, LiveObject*>;

/// The value that travels between host code, live objects and the script engine: one of thirteen
/// kinds, with whatever belongs to it. Conversions follow the script language and never fail with
/// an exception: what is no number is NaN.
///
/// - A variant owns its content. Copies are deep, except that a `LiveObject` is counted: a variant
///   holds one reference to it.
/// - Setters take their argument by value: it may be part of the variant's own content. When memory
///   runs out the variant stays as it was.
/// - Not locked: one variant is used by one thread at a time. That goes for `getString` and the
///   questions about numbers too, as they fill caches, and so for elements that copies of an array
///   share; copying, comparing, `toString(text)` and the other getters only read. Conversions of a
///   live object hold that object's lock while they call it.
class KR_API Variant : public Heap {
public:
    /// The result of `compare` for values without an order.
    static constexpr int unordered = 0x7FFFFFFF;

    /// @name Construction
    /// Each as the setter of the same type.
    /// @{
    Variant() noexcept {}
    Variant(const Variant& other) : Heap() {
        if (other.isPlain()) {
            copyPlain(other);
        } else {
            copyOwned(other);
        }
    }
    Variant(Variant&& other) noexcept : Heap() { steal(other); }
    /// A null pointer gives `Undefined`.
    Variant(const Variant* other);
    Variant(bool value) noexcept : type_(VariantType::Bool) { payload_.boolean = value; }
    Variant(int value) noexcept : Variant(static_cast<double>(value)) {}
    Variant(unsigned int value) noexcept : Variant(static_cast<double>(value)) {}
    Variant(double value) noexcept : type_(VariantType::Number) { payload_.number = value; }
    template <VariantInteger T>
    Variant(T value) noexcept : Variant(static_cast<double>(value)) {}
    Variant(const char* text);
    Variant(const char* text, const Encoder* encoder);
    Variant(const unsigned short* text);
    Variant(const char16_t* text);
    Variant(const String& text);
    Variant(const Point& point);
    Variant(const Rect& rect);
    Variant(const Array& array);
    Variant(const FileSpec& file);
    Variant(const RegExp& expression);
    Variant(const UnitValue& value);
    Variant(LiveObject& object, int info = 0);
    Variant(LiveObject* object, int info = 0);
    Variant(int id, const String& className, Root* data);
    Variant(std::nullptr_t) = delete;
    template <VariantForeignPointer T>
    Variant(T*) = delete;
    template <VariantCharacter T>
    Variant(T) = delete;
    template <class T, class C>
    Variant(T C::*) = delete;
    ~Variant() {
        if (text_ || type_ >= VariantType::Object) destroy();
    }
    /// @}

    /// @name Assignment
    /// @{
    Variant& operator=(const Variant& other);
    /// An array that this variant is an element of goes by copy, which takes memory.
    // NOLINTNEXTLINE(performance-noexcept-move-constructor): the copy may fail.
    Variant& operator=(Variant&& other);
    Variant& operator=(const Variant* other);
    Variant& operator=(bool value);
    Variant& operator=(int value) { return *this = static_cast<double>(value); }
    Variant& operator=(unsigned int value) { return *this = static_cast<double>(value); }
    Variant& operator=(double value);
    template <VariantInteger T>
    Variant& operator=(T value) {
        return *this = static_cast<double>(value);
    }
    Variant& operator=(const char* text);
    Variant& operator=(const unsigned short* text);
    Variant& operator=(const char16_t* text);
    Variant& operator=(const String& text);
    Variant& operator=(const Point& point);
    Variant& operator=(const Rect& rect);
    Variant& operator=(const Array& array);
    Variant& operator=(const FileSpec& file);
    Variant& operator=(const RegExp& expression);
    Variant& operator=(const UnitValue& value);
    Variant& operator=(LiveObject& object);
    Variant& operator=(LiveObject* object);
    Variant& operator=(std::nullptr_t) = delete;
    template <VariantForeignPointer T>
    Variant& operator=(T*) = delete;
    template <VariantCharacter T>
    Variant& operator=(T) = delete;
    template <class T, class C>
    Variant& operator=(T C::*) = delete;
    /// @}

    /// @name Setters
    /// @{
    void setBool(bool value);
    void setDouble(double value);
    void setInteger(int value) { setDouble(value); }
    void setInteger(unsigned int value) { setDouble(value); }
    template <VariantInteger T>
    void setInteger(T value) {
        setDouble(static_cast<double>(value));
    }
    /// 8-bit text is widened byte by byte; a null pointer is the empty text.
    void setString(const char* text);
    /// A null `encoder` is the default one.
    void setString(const char* text, const Encoder* encoder);
    void setString(const unsigned short* text);
    void setString(const char16_t* text);
    void setString(const String& text);
    void setPoint(const Point& point);
    void setRect(const Rect& rect);
    void setArray(const Array& array);
    void setFileSpec(const FileSpec& file);
    void setRegExp(const RegExp& expression);
    void setUnitValue(const UnitValue& value);

    /// Takes a reference to the object; a null pointer gives `Null`. `info` is the caller's own: it
    /// is kept beside the object and copied with it, see `getLiveObjectInfo`.
    void setLiveObject(LiveObject& object, int info = 0);
    void setLiveObject(LiveObject* object, int info = 0);

    /// An `Object` with the engine's object as its data, under the object's own ID and class name.
    /// The pointer form adopts the object, and a null pointer gives `Null`; the reference form
    /// takes a clone and leaves the caller the original.
    void setJSObject(JSObject* object);
    void setJSObject(const JSObject& object);

    /// An `Object`. `data`, which may be null, is adopted.
    void setObject(int id, const String& className, Root* data);
    /// Replaces the data of an `Object`, which is adopted and deleted with the variant. Any other
    /// kind becomes an `Object` with ID 0 and the class name "Object" first.
    void setObjectData(Root* data);
    /// Replaces the ID of an `Object`. Any other kind becomes an `Object` without data and with the
    /// class name "Object" first.
    void setObjectID(int id);

    void setNull();
    void setNaN();
    void setPosInfinity();
    void setNegInfinity();
    void setMinus0();
    /// Makes the variant `Undefined`.
    void erase();
    /// @}

    /// @name Queries
    /// The questions about numbers are false for every other kind.
    /// @{
    VariantType getType() const noexcept { return type_; }
    /// The kind as its number, for tables.
    int getDataType() const noexcept { return static_cast<int>(type_); }
    bool isDefined() const noexcept { return type_ != VariantType::Undefined; }
    bool isNull() const noexcept { return type_ == VariantType::Null; }
    bool isNaN() const { return hasAttribute(NaN); }
    bool isFinite() const { return hasAttribute(Finite); }
    bool isMinus0() const { return hasAttribute(MinusZero); }
    /// A whole number in the range of `int`, minus zero included.
    bool isInteger() const { return hasAttribute(Integer); }
    /// A whole number in the range of `unsigned int`, minus zero included.
    bool isUInteger() const { return hasAttribute(UnsignedInteger); }
    /// An `Object` that has an ID or data, or a `LiveObject` whose host thing is alive.
    bool isValidObject() const;
    /// An `Object` whose data has no object ID yet.
    bool hasUnassignedObjectData() const;
    /// @}

    /// @name Getters
    /// Those for numbers and text convert and leave the variant as it is. Pointers are borrowed:
    /// they last until the variant changes, and are null when it holds another kind.
    /// @{

    /// `Number` false for 0 and NaN, `String` false when empty, `Object` and `LiveObject` true,
    /// `UnitValue` by its number. Every other kind is true only if its text is "true".
    bool getBool() const;
    /// NaN for `Undefined`, `Point`, `Rect`, `Array` and whatever does not scan as a number. An
    /// object that gives another object as its value is followed for 16 steps.
    double getDouble() const;
    /// The number without its fraction; beyond the range the nearest limit, 0 for NaN.
    int getInteger() const;
    /// The same, kept within `minimum` ... `maximum`.
    int getInteger(int minimum, int maximum) const;
    unsigned int getUInteger() const;

    /// The string form. Borrowed: it lasts until the variant changes or is asked for another text.
    const String& getString() const;
    /// Numbers in base `radix` (2 to 36; 0 and 10 decimal, any other "NaN"), whole part only unless
    /// decimal. Other kinds as `getString()`.
    const String& getString(int radix) const;
    /// Decimal numbers that are not whole with `precision` places (15 is the default form).
    const String& getString(int radix, int precision) const;

    const Point* getPoint() const;
    const Rect* getRect() const;
    const Array* getArray() const;
    const UnitValue* getUnitValue() const;
    Point* getPoint() { return const_cast<Point*>(std::as_const(*this).getPoint()); }
    Rect* getRect() { return const_cast<Rect*>(std::as_const(*this).getRect()); }
    Array* getArray() { return const_cast<Array*>(std::as_const(*this).getArray()); }
    UnitValue* getUnitValue() {
        return const_cast<UnitValue*>(std::as_const(*this).getUnitValue());
    }
    /// Sets `array` to this variant's array, or to the array `convert` would make of it.
    void getArray(Array& array) const;
    const FileSpec* getFileSpec() const;
    const RegExp* getRegExp() const;

    LiveObject* getLiveObject() const;
    /// The `info` the live object was set with; 0 for any other kind.
    int getLiveObjectInfo() const;
    LiveCollection* getLiveCollection() const;
    /// The same with a reference for the caller; false, with `object` cleared, when there is none.
    bool getAsLiveObject(InterfacePtr<LiveObject>& object) const;
    bool getAsLiveCollection(InterfacePtr<LiveCollection>& collection) const;

    /// The data of an `Object` when it is an engine's object.
    JSObject* getJSObject() const;
    /// The engine of that object.
    KrScript::Engine* getMarlscriptEngine() const;
    Root* getObjectData() const;
    /// 0 unless this is an `Object`.
    int getObjectID() const;
    /// The class name of an `Object`, of a `LiveObject` its own; empty for any other kind.
    const String& getObjectClassName() const;
    /// @}

    /// @name Conversion
    /// @{
    /// Changes the kind in place and returns 0. `Point` and `Rect` take the first elements of an
    /// `Array` as coordinates (missing ones are 0) and are zero from any other kind. An `Array` is
    /// made of the coordinates of `Point` and `Rect`, of any other value as its only element. To
    /// `Object`, `LiveObject`, `FileSpec`, `RegExp` and `UnitValue` nothing converts:
    /// `CannotConvert`, and the variant stays.
    int convert(VariantType type);
    const String& toString() const { return getString(); }
    void toString(String& text) const;

    /// 0 when the number lies between the limits, both included; `OutOfRange` when it does not;
    /// `TypeMismatch` when the value is no number. The integer forms want a whole number.
    int validate(int minimum, int maximum) const;
    int validate(unsigned int minimum, unsigned int maximum) const;
    int validate(double minimum, double maximum) const;
    /// 0 when the variant is of that kind, else `TypeMismatch`.
    int validate(VariantType type) const;
    /// @}

    /// @name Properties
    /// Of a `LiveObject`, or of an `Object` whose data is an engine's object. Anything else gives
    /// `NotAnObject`. The first failure is returned and recorded in `err`; what was copied before
    /// stays.
    /// @{
    /// Adds the properties that `flags` ask for (`RequestFlag`) and that can be read to the table
    /// under their names. Values that the table has under these names already are overwritten; new
    /// ones are made with `new`, and the caller deletes them.
    int getObjectProperties(THashTable<Variant>& properties, int flags, Error* err) const;
    /// Writes every entry of the table into the property of its name; a dynamic object gets new
    /// properties for names it does not know.
    int setObjectProperties(const THashTable<Variant>& properties, Error* err);
    /// @}

    /// @name Comparison
    /// @{
    /// Negative, 0 or positive, or `unordered`. Values of the same simple kind compare as that
    /// kind; a number, boolean or `Null` makes the other side a number; everything else compares as
    /// text. `Undefined` is less than anything else, and a NaN beside a number is `unordered`, even
    /// with itself.
    int compare(const Variant& other) const;
    /// `compare` gives 0. So NaN differs from itself, and so does every `Rect`, as `Rect::cmp` has
    /// it.
    bool operator==(const Variant& other) const { return compare(other) == 0; }
    bool operator!=(const Variant& other) const { return !(*this == other); }
    int operator<(const Variant& other) const { return compare(other) < 0; }
    /// @}

    /// @name Scanning
    /// `flags`, without the bits 0x100 and 0x200, say what may stand behind the number: 0 nothing,
    /// 1 text that begins with white space, any other value any text. What is not allowed makes the
    /// result NaN. `rest`, when given, gets the text from where scanning stopped, and may be
    /// `text`.
    ///
    /// White space may stand before the number, and one sign. Text of white space alone is 0; a
    /// sign or a point alone, like any text without digits, is NaN.
    /// @{
    /// A decimal number with fraction and exponent, "Infinity", "NaN", or "0x" and hexadecimal
    /// digits. Not correctly rounded like a C compiler's: the first 18 digits are scaled by one
    /// power of ten, and results below 1e-308 are 0 more often than they had to be.
    static double scanDouble(const String& text, int flags, String* rest = nullptr);
    /// Whole numbers in base `radix`, 2 to 36. 16 allows for "0x" in front, 0 is 16 behind "0x" and
    /// 10 otherwise; any other radix is NaN. Numbers beyond 2^64 are rounded at every further
    /// digit.
    static double scanInteger(const String& text, int radix, int flags, String* rest = nullptr);
    /// @}

private:
    /// What is known of a number and of the cached text. The bits above belong to nobody and
    /// survive a new value.
    enum Attribute : unsigned short {
        Finite = 1,
        Integer = 2,
        UnsignedInteger = 4,
        NaN = 8,
        PlusInfinity = 16,
        MinusInfinity = 32,
        MinusZero = 64,
        NumberKnown = 128,
        NumberAttributes = 255,
        TextValid = 256,
        Unassigned = 0xFE00
    };

    /// The ID and class name of an `Object`; its payload word points here.
    struct ObjectIdentity;

    union Payload {
        double number;
        bool boolean;
        ObjectIdentity* identity;
        LiveObject* liveObject;
        Point* point;
        Rect* rect;
        Array* array;
        FileSpec* fileSpec;
        RegExp* regExp;
        UnitValue* unitValue;
    };
    /// The second word: the data of an `Object`, the info of a `LiveObject`.
    union Companion {
        Root* objectData;
        int info;
    };
    /// All of a value but its text, for moving it about.
    struct Content {
        VariantType type = VariantType::Undefined;
        Payload payload{};
        Companion companion{};
    };

    bool isPlain() const noexcept { return type_ <= VariantType::Number; }
    void copyPlain(const Variant& other) noexcept {
        payload_ = other.payload_;
        type_ = other.type_;
        attributes_ = static_cast<unsigned short>(other.attributes_ & ~TextValid);
    }
    void steal(Variant& other) noexcept {
        payload_ = other.payload_;
        companion_ = other.companion_;
        text_ = std::exchange(other.text_, nullptr);
        type_ = std::exchange(other.type_, VariantType::Undefined);
        attributes_ = std::exchange(other.attributes_, static_cast<unsigned short>(0));
    }
    bool hasAttribute(Attribute attribute) const {
        if (type_ != VariantType::Number) return false;
        if (!(attributes_ & NumberKnown)) classify();
        return (attributes_ & attribute) != 0;
    }

    void classify() const;
    void copyOwned(const Variant& other);
    void destroy() noexcept;
    Content content() const noexcept { return {type_, payload_, companion_}; }
    Content copyContentFor(const Variant& owner) const;
    void copyObject(Content& copy) const;
    static void destroyContent(const Content& content) noexcept;
    void install(const Content& content) noexcept;
    void installText(String& text);
    void setPlain(VariantType type, Payload payload = {}) noexcept;
    String& textSlot() const;
    void formText(String& text) const;
    void formObjectText(String& text) const;
    double ownNumber() const;
    bool getPrimitive(Variant& result) const;
    bool isNumeric() const noexcept {
        return type_ == VariantType::Null || type_ == VariantType::Bool ||
               type_ == VariantType::Number;
    }
    void convertToArray();
    bool compareSameKind(const Variant& other, int& order) const;

    Payload payload_{};
    Companion companion_{};
    mutable String* text_ = nullptr; ///< Owned: the value of a `String`, else the cached text.
    VariantType type_ = VariantType::Undefined;
    mutable unsigned short attributes_ = 0;
};

static_assert(sizeof(Variant) == 32);

} // namespace KrCore
