#pragma once

#include "foundation/HeapBlocks.h"

#include <krcore/foundation/Heap.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace KrCore {

/// A stack of plain records on the heap, for walks that must not recurse and for runs that grow.
/// It doubles its block; pushing throws `OutOfMemory` and leaves the stack as it was.
template <class T>
class WorkStack {
    static_assert(std::is_trivially_copyable_v<T> && alignof(T) <= 8);

public:
    WorkStack() noexcept = default;
    ~WorkStack() { Heap::operator delete(items_); }
    WorkStack(const WorkStack&) = delete;
    WorkStack& operator=(const WorkStack&) = delete;

    bool isEmpty() const noexcept { return count_ == 0; }
    std::size_t size() const noexcept { return count_; }
    T* begin() noexcept { return items_; }
    T* end() noexcept { return items_ + count_; }
    T& operator[](std::size_t index) noexcept { return items_[index]; }
    T& top() noexcept { return items_[count_ - 1]; }

    void push(const T& item) { *extend(1) = item; }
    void pop() noexcept { --count_; }
    void shrinkTo(std::size_t count) noexcept { count_ = count; }

    /// Room for `count` more at the top, for the caller to fill.
    T* extend(std::size_t count) {
        if (capacity_ - count_ < count) grow(count);
        T* room = items_ + count_;
        count_ += count;
        return room;
    }

private:
    static constexpr std::size_t firstCapacity = std::max<std::size_t>(512 / sizeof(T), 8);

    void grow(std::size_t count) {
        const std::size_t capacity = std::max({firstCapacity, 2 * capacity_, count_ + count});
        items_ = static_cast<T*>(growBlock(items_, capacity * sizeof(T)));
        capacity_ = capacity;
    }

    T* items_ = nullptr;
    std::size_t count_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace KrCore
