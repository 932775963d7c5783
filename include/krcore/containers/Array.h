#pragma once

#include <krcore/containers/BasicArray.h>
#include <krcore/values/Variant.h>

namespace KrCore {

/// The array of `Variant` values: argument lists and the storage of script arrays.
///
/// It may be long and full of holes: indexes below its dense limit (1024 or more; 16 for an array
/// made longer than 4096) live in a vector, the others one by one in a `SparseArray`. Arrays are
/// values: copying shares the record until either side writes. One array belongs to one thread at a
/// time; the arrays that share a record may belong to several. Threads that read elements they
/// share ask for values and `toString(text)`, not for `getString()` or `isInteger()` and its like:
/// these fill caches in the element. The array's own text and comparison fill none.
///
/// A writable element stays valid until the next change of the length, and may not be written any
/// more once the array was copied. Storing an array in one of its own elements stores what it was
/// before, so no array ever contains itself.
class KR_API Array : public BasicArray {
public:
    Array();
    Array(const Array& other);
    Array(Array&& other) noexcept;
    /// An array of `length` undefined elements.
    explicit Array(unsigned int length);
    ~Array() override;
    Array& operator=(const Array& other);
    /// Leaves `other` empty; into one of its own elements an array goes by copy, which takes
    /// memory.
    // NOLINTNEXTLINE(performance-noexcept-move-constructor): the copy may fail.
    Array& operator=(Array&& other);
    /// Sets the length; a negative one is 0.
    Array& operator=(int length);

    unsigned int length() const override;
    bool isDefined(unsigned int index) const override;
    Variant* get(unsigned int index) const override;

    using BasicArray::operator[];
    /// The element for writing; it is created, and the array made longer, when need be. Index
    /// 4,294,967,295 cannot be an element: it gives a value that is forgotten.
    Variant& operator[](unsigned int index) { return safeGet(index); }
    Variant& safeGet(unsigned int index);
    /// The first element of the dense part, for reading; null when there is none.
    Variant* getData() const;

    /// Grows with undefined elements or truncates. Kept: truncation to the dense limit or below
    /// leaves the elements beyond that limit hidden, and they reappear when the array grows again
    /// (held by ArrayLength.HidesSparseElementsWhenCutWithinTheDenseLimit).
    void setLength(unsigned int length);
    /// Moves the elements from `index` on up by `count` and leaves undefined ones in between. At or
    /// beyond the end the array just becomes longer. A length beyond 4,294,967,295 is refused:
    /// nothing happens.
    void insertAt(unsigned int index, unsigned int count);
    /// Removes the elements `index` ... `index + count - 1`, as far as they exist, and closes the
    /// gap.
    void removeAt(unsigned int index, unsigned int count);
    /// Makes one element undefined; the length stays.
    void deleteAt(unsigned int index);

    /// Append one element; nothing is appended to an array of length 4,294,967,295.
    Array& operator+=(const Variant& value);
    Array& operator+=(const String& text);
    Array& operator+=(const char* text);
    Array& operator+=(const unsigned short* text);
    Array& operator+=(const char16_t* text);
    Array& operator+=(int number);
    Array& operator+=(unsigned int number);
    Array& operator+=(double number);
    template <VariantInteger T>
    Array& operator+=(T number) {
        return *this += static_cast<double>(number);
    }
    Array& operator+=(bool value);
    Array& operator+=(LiveObject& object);
    Array& operator+=(LiveObject* object);
    Array& operator+=(const FileSpec& file);
    Array& operator+=(const Point& point);
    Array& operator+=(const Rect& rect);
    /// Every other pointer would be appended as `true`.
    Array& operator+=(const Variant*) = delete;
    template <VariantForeignPointer T>
    Array& operator+=(T*) = delete;
    template <VariantCharacter T>
    Array& operator+=(T) = delete;
    /// Appends the elements of `other`, holes kept, as far as the length allows. A constant or
    /// temporary array is a `Variant` for this operator, and so becomes one element.
    Array& operator+=(Array& other);
    /// Sets the length to 0.
    void erase();
    /// Stops sharing now.
    void makeUnique();

    /// The same length and, element by element, equal values. A missing element is undefined.
    bool operator==(const Array& other) const;
    bool operator!=(const Array& other) const { return !(*this == other); }

    /// Replaces the content by the literal that starts at unit `position` of `text`; on failure
    /// returns false and leaves the array alone.
    ///
    /// A literal is `[` values separated by commas `]` with blanks (units up to 32) anywhere
    /// between. A value is a literal of its own (at most 512 deep), a text in quotes as
    /// `String::parse` reads it, or a word: `undefined`, `null`, `true`, `false` or a number as
    /// `Variant::scanDouble` reads it. Nothing between two commas leaves a hole; one comma after
    /// the last value is allowed. Behind the literal only blanks may follow.
    bool parse(const String& text, int position);

private:
    friend class BasicArray;
    friend class Variant;
    struct Data;
    class Discard;
    class Search;
    class Shift;

    /// A copy for calls that do not look like one to their caller: elements that were handed out
    /// may still be written afterwards.
    Array share() const;
    /// Whether `place`, an element or the array in one, lies within this array at any depth.
    bool holds(const void* place) const;
    /// A copy to be stored at `place`. When that lies within this array, the copy shares nothing of
    /// what leads there: else the array would come to hold itself.
    Array copyFor(const void* place) const;
    Array& appendValue(Variant&& value);
    void truncate(unsigned int length);

    Data* data_;
};

} // namespace KrCore
