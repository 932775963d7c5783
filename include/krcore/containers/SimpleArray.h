#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Heap.h>

namespace KrCore {

/// A growable array of 64-bit words: integers, or pointers that it never owns.
///
/// A handle of one pointer on a shared buffer. Copying shares the buffer, every member that writes
/// first makes it this array's own. Distinct arrays may share a buffer across threads; one array
/// belongs to one thread at a time. The capacity follows the length both up and down in steps of
/// the increment (8 at first).
///
/// No position faults: see the members for what is clipped and what is absorbed. What needs more
/// memory than there is throws `OutOfMemory` and leaves the array as it was.
class KR_API SimpleArray : public Heap {
public:
    SimpleArray() : buffer_(&emptyBuffer_) {}
    /// A copy of `count` words, with a capacity of just that.
    SimpleArray(const long long* words, int count);
    SimpleArray(const SimpleArray& other);
    SimpleArray(SimpleArray&& other) noexcept : buffer_(other.buffer_) {
        other.buffer_ = &emptyBuffer_;
    }
    ~SimpleArray();
    SimpleArray& operator=(const SimpleArray& other);
    SimpleArray& operator=(SimpleArray&& other) noexcept;

    /// The element for reading and writing. Any other index gives the scratch word of the buffer:
    /// it absorbs what is written and reads as what was last written there, 0 at first. The
    /// reference lasts until the next member that writes, and must not be used once a copy was
    /// taken.
    long long& operator[](int index);
    long long operator[](int index) const {
        return isInside(index) ? elements()[index] : buffer_->scratch;
    }
    /// The elements for reading. Borrowed: lasts until the next member that writes. Not null.
    const long long* getData() const { return elements(); }
    int length() const { return buffer_->count; }
    const long long* begin() const { return elements(); }
    const long long* end() const { return elements() + buffer_->count; }

    /// Makes the length `size`; new elements are 0. The capacity becomes the smallest multiple of
    /// the increment that holds them. A size below 1 gives the buffer back, and with it a changed
    /// increment.
    void setSize(int size);
    /// Changes the step of growth, at least 1. It stays until the array becomes empty by `setSize`,
    /// `clear`, `erase` or a removal.
    void setIncrement(int increment);
    int getIncrement() const { return buffer_->increment; }
    /// Both are `setSize(0)`.
    void clear() { setSize(0); }
    void erase() { setSize(0); }

    void append(long long value);
    void append(const SimpleArray& other);
    SimpleArray& operator+=(long long value);
    SimpleArray& operator+=(const SimpleArray& other);
    /// Puts `value` before the element at `position`, clipped to 0 ... `length()`.
    void insert(long long value, int position);
    /// Opens a gap of `count` zeros at `position`, clipped likewise; a count below 1 does nothing.
    void insertGap(int position, int count);

    /// Removes the first element equal to `value`; false when there is none.
    bool remove(long long value);
    SimpleArray& operator-=(long long value);
    /// Takes the element at `index`, clipped to 0 ... `length() - 1`, out; 0 from an empty array.
    long long removeAt(int index);
    /// Removes the elements `position` ... `position + count - 1` as far as they exist.
    void removeGap(int position, int count);

    /// The position of the first element equal to `value`, or -1.
    int indexOf(long long value) const;
    bool operator==(const SimpleArray& other) const;
    bool operator!=(const SimpleArray& other) const { return !(*this == other); }

    /// The elements `start` ... `start + count - 1`, as far as they exist, as an array of its own.
    SimpleArray copy(int start, int count) const;
    /// Appends each element of `other` that is not yet here, in its order. Zeros count only with
    /// `keepZeros`, and then once like any other value.
    void merge(const SimpleArray& other, bool keepZeros);
    /// Calls `visit` with every position and element. The elements are for reading: a write through
    /// the pointer would reach every array that shares the buffer. The walk ends early when `visit`
    /// shortens this array, and takes no notice of elements that it adds.
    void forEach(void (*visit)(int index, long long* element, long long data),
                 long long data) const;
    /// Gives the array a buffer of its own that will never be shared: later copies of this array
    /// get fresh, shareable buffers at once. The mark ends with the buffer.
    void makeUnique();

private:
    struct Buffer {
        int refCount;
        int count;
        unsigned int capacityWord; ///< Capacity, and the unshareable mark in the top bit.
        int increment;
        long long scratch; ///< Stands in for every element out of range; the elements follow.
    };
    static Buffer emptyBuffer_;

    bool isInside(int index) const { return index >= 0 && index < buffer_->count; }
    long long* elements() const { return &buffer_->scratch + 1; }
    int capacity() const { return static_cast<int>(buffer_->capacityWord & 0x7FFFFFFFU); }
    bool isUnshareable() const { return (buffer_->capacityWord & 0x80000000U) != 0; }
    bool isShared() const;
    void unique();
    void release() noexcept;
    void extend(int count);
    /// The words must not lie in this array's own buffer.
    void appendWords(const long long* words, int count);
    static Buffer* createBuffer(long long capacity, const Buffer& source, int count);
    static Buffer* duplicate(const Buffer& source);
    static Buffer* share(const SimpleArray& other);

    Buffer* buffer_;
};

} // namespace KrCore
