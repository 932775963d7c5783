#pragma once

#include <krcore/containers/SimpleArray.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>

namespace KrCore {

/// A `SimpleArray` whose words are pointers to `T`, borrowed: it owns nothing and counts no
/// references. An index out of range reads as null unless the scratch word was written.
template <class T>
class TSimpleArray : public SimpleArray {
public:
    /// Walks the pointers of an array; valid until the next member that writes.
    class Iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = T*;
        using difference_type = std::ptrdiff_t;
        using pointer = T* const*;
        using reference = T*;

        Iterator() = default;
        explicit Iterator(const long long* word) : word_(word) {}
        T* operator*() const { return toPointer(*word_); }
        Iterator& operator++() {
            ++word_;
            return *this;
        }
        Iterator operator++(int) {
            const Iterator before = *this;
            ++word_;
            return before;
        }
        bool operator==(const Iterator& other) const { return word_ == other.word_; }
        bool operator!=(const Iterator& other) const { return word_ != other.word_; }

    private:
        const long long* word_ = nullptr;
    };

    TSimpleArray() = default;
    /// A copy of `count` pointers, with a capacity of just that.
    TSimpleArray(T* const* items, int count)
        : SimpleArray(reinterpret_cast<const long long*>(items), count) {}

    T* operator[](int index) const { return toPointer(SimpleArray::operator[](index)); }
    /// Replaces the element; an index out of range is absorbed.
    void set(int index, T* item) { SimpleArray::operator[](index) = toWord(item); }
    Iterator begin() const { return Iterator(SimpleArray::begin()); }
    Iterator end() const { return Iterator(SimpleArray::end()); }

    void append(T* item) { SimpleArray::append(toWord(item)); }
    void append(const TSimpleArray& other) { SimpleArray::append(other); }
    TSimpleArray& operator+=(T* item) {
        append(item);
        return *this;
    }
    TSimpleArray& operator+=(const TSimpleArray& other) {
        append(other);
        return *this;
    }
    void insert(T* item, int position) { SimpleArray::insert(toWord(item), position); }
    bool remove(T* item) { return SimpleArray::remove(toWord(item)); }
    TSimpleArray& operator-=(T* item) {
        remove(item);
        return *this;
    }
    T* removeAt(int index) { return toPointer(SimpleArray::removeAt(index)); }
    int indexOf(T* item) const { return SimpleArray::indexOf(toWord(item)); }

    static T* toPointer(long long word) {
        return reinterpret_cast<T*>(static_cast<std::intptr_t>(word));
    }
    static long long toWord(T* item) { return reinterpret_cast<std::intptr_t>(item); }
};

/// An array of counted pointers: it holds one reference (`addRef`, `release`) on each element, null
/// elements excepted. Copying takes references of its own.
template <class T>
class TISimpleArray : public Heap {
public:
    using Iterator = typename TSimpleArray<T>::Iterator;

    TISimpleArray() = default;
    TISimpleArray(const TISimpleArray& other) : Heap(), items_(other.items_) { addRefs(); }
    TISimpleArray(TISimpleArray&& other) noexcept : Heap(), items_(std::move(other.items_)) {}
    ~TISimpleArray() { releaseAll(items_); }
    TISimpleArray& operator=(const TISimpleArray& other) {
        TISimpleArray copy(other);
        std::swap(items_, copy.items_);
        return *this;
    }

    int length() const { return items_.length(); }
    /// Borrowed from the array; null out of range.
    T* operator[](int index) const { return items_[index]; }
    Iterator begin() const { return items_.begin(); }
    Iterator end() const { return items_.end(); }
    int indexOf(T* item) const { return items_.indexOf(item); }
    /// The pointers for members that take a plain array. Borrowed.
    const TSimpleArray<T>& getItems() const { return items_; }

    void append(T* item) { insert(item, length()); }
    TISimpleArray& operator+=(T* item) {
        append(item);
        return *this;
    }
    void insert(T* item, int position) {
        items_.insert(item, position);
        if (item) item->addRef();
    }
    /// Removes the first occurrence; false when there is none.
    bool remove(T* item) {
        const int index = indexOf(item);
        if (index >= 0) removeAt(index);
        return index >= 0;
    }
    /// Removes and releases the element at `index`, clipped to 0 ... `length() - 1`.
    void removeAt(int index) {
        T* item = items_.removeAt(index);
        if (item) item->release();
    }
    /// Removes and releases every element for which `unwanted(T* item)` is true, in one pass.
    /// Returns how many. `unwanted` must not throw.
    template <class Unwanted>
    int removeIf(Unwanted&& unwanted) {
        const int count = length();
        int kept = 0;
        for (int index = 0; index < count; ++index) {
            T* item = items_[index];
            if (unwanted(item)) {
                items_.set(index, nullptr);
                if (item) item->release();
            } else if (kept++ != index) {
                items_.set(index, nullptr);
                items_.set(kept - 1, item);
            }
        }
        items_.removeGap(kept, count - kept);
        return count - kept;
    }
    void erase() { releaseAll(takeItems()); }
    /// Empties the array without releasing anything: the references are the caller's now.
    [[nodiscard]] TSimpleArray<T> takeItems() { return std::move(items_); }

    /// Puts pointers into the empty array, with the references that they arrive with. On
    /// `OutOfMemory` these stay the caller's.
    void adopt(T* const* items, int count) { items_ = TSimpleArray<T>(items, count); }

    int getIncrement() const { return items_.getIncrement(); }
    void setIncrement(int increment) { items_.setIncrement(increment); }

private:
    void addRefs() const {
        for (T* item : items_) {
            if (item) item->addRef();
        }
    }
    static void releaseAll(const TSimpleArray<T>& items) {
        for (T* item : items) {
            if (item) item->release();
        }
    }

    TSimpleArray<T> items_;
};

} // namespace KrCore
