#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Root.h>

namespace KrCore {

class String;
class Variant;

/// What an array of `Variant`s shows to its readers. The order of the virtual functions is part of
/// the interface.
class KR_API BasicArray : public Root {
public:
    /// Walks every index from 0 to the length, holes included; they read as undefined.
    class Iterator {
    public:
        Iterator(const BasicArray& array, unsigned int index) : array_(&array), index_(index) {}
        const Variant& operator*() const { return (*array_)[index_]; }
        Iterator& operator++() {
            ++index_;
            return *this;
        }
        bool operator==(const Iterator& other) const { return index_ == other.index_; }
        bool operator!=(const Iterator& other) const { return index_ != other.index_; }

    private:
        const BasicArray* array_;
        unsigned int index_;
    };

    virtual unsigned int length() const = 0;
    /// Whether the element exists and holds a value other than undefined.
    virtual bool isDefined(unsigned int index) const = 0;
    /// The element for reading, or null when there is none. Borrowed, and shared with copies of the
    /// array: never write through it.
    virtual Variant* get(unsigned int index) const = 0;

    /// The element for reading, an undefined value when there is none. Borrowed: lasts until the
    /// next change of the array.
    const Variant& operator[](unsigned int index) const;
    Iterator begin() const { return Iterator(*this, 0); }
    Iterator end() const { return Iterator(*this, length()); }

    /// Writes the elements' texts separated by commas. Undefined, null and missing elements give
    /// nothing, an array within the array its own text in brackets, one that contains itself
    /// "[this]".
    ///
    /// A text holds at most 65,536 elements, nested ones included, and arrays at most 100 deep; in
    /// place of the rest stands "[too many elements]".
    void toString(String& text) const;

protected:
    BasicArray() = default;
    ~BasicArray() override = default;

private:
    void appendText(String& text, const char* opening, const char* closing) const;
    static void appendElement(String& text, const Variant& element);
};

} // namespace KrCore
