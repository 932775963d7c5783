#include <krcore/containers/SimpleArray.h>

#include <krcore/containers/SparseArray.h>

#include "foundation/AtomicCount.h"
#include "foundation/HeapBlocks.h"

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstring>
#include <utility>

namespace KrCore {

static_assert(sizeof(SimpleArray) == sizeof(void*), "a handle and nothing else");

namespace {

constexpr int defaultIncrement = 8;
constexpr unsigned int unshareableMark = 0x80000000U;
/// From this many elements on, `merge` remembers what is there instead of searching for it each
/// time.
constexpr int mergeByTable = 32;

} // namespace

// The buffer of every empty array. Its own count is never read: whoever writes takes a fresh
// buffer, and nobody frees it.
constinit SimpleArray::Buffer SimpleArray::emptyBuffer_{1, 0, 0, defaultIncrement, 0};

SimpleArray::Buffer* SimpleArray::createBuffer(long long capacity, const Buffer& source,
                                               int count) {
    const auto byteCount = sizeof(Buffer) + static_cast<std::size_t>(capacity) * sizeof(long long);
    auto* buffer = static_cast<Buffer*>(Heap::operator new(byteCount));
    *buffer = {1, count, static_cast<unsigned int>(capacity), source.increment, source.scratch};
    return buffer;
}

SimpleArray::Buffer* SimpleArray::duplicate(const Buffer& source) {
    Buffer* buffer = createBuffer(source.capacityWord & ~unshareableMark, source, source.count);
    std::memcpy(buffer + 1, &source + 1,
                static_cast<std::size_t>(source.count) * sizeof(long long));
    return buffer;
}

SimpleArray::Buffer* SimpleArray::share(const SimpleArray& other) {
    if (other.buffer_ == &emptyBuffer_) return other.buffer_;
    if (other.isUnshareable()) return duplicate(*other.buffer_);
    countUp(other.buffer_->refCount);
    return other.buffer_;
}

SimpleArray::SimpleArray(const long long* words, int count) : SimpleArray() {
    if (count < 1) return;
    buffer_ = createBuffer(count, emptyBuffer_, count);
    std::memcpy(elements(), words, static_cast<std::size_t>(count) * sizeof(long long));
}

SimpleArray::SimpleArray(const SimpleArray& other) : Heap(), buffer_(share(other)) {}

SimpleArray::~SimpleArray() { release(); }

SimpleArray& SimpleArray::operator=(const SimpleArray& other) {
    if (buffer_ == other.buffer_) return *this; // It keeps the mark of `makeUnique`.
    SimpleArray copy(other);
    std::swap(buffer_, copy.buffer_);
    return *this;
}

SimpleArray& SimpleArray::operator=(SimpleArray&& other) noexcept {
    std::swap(buffer_, other.buffer_);
    return *this;
}

bool SimpleArray::isShared() const {
    // The acquiring load pairs with the decrement of another thread that has just let go of the
    // buffer.
    return buffer_ == &emptyBuffer_ ||
           std::atomic_ref<int>(buffer_->refCount).load(std::memory_order_acquire) > 1;
}

void SimpleArray::release() noexcept {
    if (buffer_ == &emptyBuffer_) return;
    if (countDown(buffer_->refCount) <= 0) Heap::operator delete(buffer_);
    buffer_ = &emptyBuffer_;
}

void SimpleArray::unique() {
    if (!isShared()) return;
    Buffer* own = duplicate(*buffer_);
    release();
    buffer_ = own;
}

void SimpleArray::makeUnique() {
    unique();
    buffer_->capacityWord |= unshareableMark;
}

long long& SimpleArray::operator[](int index) {
    unique();
    return isInside(index) ? elements()[index] : buffer_->scratch;
}

void SimpleArray::setSize(int size) {
    if (size < 1) {
        release();
        return;
    }
    const long long increment = buffer_->increment;
    const long long newCapacity = (size + increment - 1) / increment * increment;
    if (newCapacity == capacity()) {
        unique();
    } else if (isShared()) {
        const int kept = std::min(size, buffer_->count);
        Buffer* fresh = createBuffer(newCapacity, *buffer_, kept);
        std::memcpy(fresh + 1, elements(), static_cast<std::size_t>(kept) * sizeof(long long));
        release();
        buffer_ = fresh;
    } else {
        const auto byteCount =
            sizeof(Buffer) + static_cast<std::size_t>(newCapacity) * sizeof(long long);
        buffer_ = static_cast<Buffer*>(growBlock(buffer_, byteCount));
        buffer_->capacityWord =
            static_cast<unsigned int>(newCapacity) | (buffer_->capacityWord & unshareableMark);
    }
    if (size > buffer_->count) {
        std::memset(elements() + buffer_->count, 0,
                    static_cast<std::size_t>(size - buffer_->count) * sizeof(long long));
    }
    buffer_->count = size;
}

void SimpleArray::setIncrement(int increment) {
    unique();
    buffer_->increment = std::max(increment, 1);
}

void SimpleArray::append(long long value) {
    const int oldCount = buffer_->count;
    if (oldCount < capacity()) {
        unique();
        ++buffer_->count;
    } else {
        extend(1);
    }
    elements()[oldCount] = value;
}

void SimpleArray::append(const SimpleArray& other) {
    const SimpleArray source(other);
    appendWords(source.getData(), source.length());
}

void SimpleArray::appendWords(const long long* words, int count) {
    if (count < 1) return;
    const int oldCount = buffer_->count;
    extend(count);
    std::memcpy(elements() + oldCount, words, static_cast<std::size_t>(count) * sizeof(long long));
}

/// One `setSize` for all new elements: by steps of the increment each would move the whole array.
void SimpleArray::extend(int count) {
    const long long newCount = static_cast<long long>(buffer_->count) + count;
    if (newCount > INT_MAX) throw OutOfMemory();
    setSize(static_cast<int>(newCount));
}

SimpleArray& SimpleArray::operator+=(long long value) {
    append(value);
    return *this;
}

SimpleArray& SimpleArray::operator+=(const SimpleArray& other) {
    append(other);
    return *this;
}

void SimpleArray::insert(long long value, int position) {
    const int index = std::clamp(position, 0, buffer_->count);
    insertGap(index, 1);
    elements()[index] = value;
}

void SimpleArray::insertGap(int position, int count) {
    if (count < 1) return;
    const int oldCount = buffer_->count;
    const int index = std::clamp(position, 0, oldCount);
    const long long newCount = static_cast<long long>(oldCount) + count;
    if (newCount <= capacity()) {
        unique();
        buffer_->count = static_cast<int>(newCount);
    } else {
        extend(count);
    }
    long long* gap = elements() + index;
    std::memmove(gap + count, gap, static_cast<std::size_t>(oldCount - index) * sizeof(long long));
    std::memset(gap, 0, static_cast<std::size_t>(count) * sizeof(long long));
}

bool SimpleArray::remove(long long value) {
    const int index = indexOf(value);
    if (index < 0) return false;
    removeGap(index, 1);
    return true;
}

SimpleArray& SimpleArray::operator-=(long long value) {
    remove(value);
    return *this;
}

long long SimpleArray::removeAt(int index) {
    if (buffer_->count == 0) return 0;
    const int position = std::clamp(index, 0, buffer_->count - 1);
    const long long value = elements()[position];
    removeGap(position, 1);
    return value;
}

void SimpleArray::removeGap(int position, int count) {
    const long long oldCount = buffer_->count;
    const long long start = std::clamp<long long>(position, 0, oldCount);
    const long long stop =
        std::clamp<long long>(static_cast<long long>(position) + count, start, oldCount);
    if (start == stop) return;
    if (stop - start == oldCount) {
        release();
        return;
    }
    unique();
    std::memmove(elements() + start, elements() + stop,
                 static_cast<std::size_t>(oldCount - stop) * sizeof(long long));
    buffer_->count = static_cast<int>(oldCount - (stop - start));
}

int SimpleArray::indexOf(long long value) const {
    const long long* found = std::find(begin(), end(), value);
    return found == end() ? -1 : static_cast<int>(found - begin());
}

bool SimpleArray::operator==(const SimpleArray& other) const {
    return buffer_ == other.buffer_ || std::equal(begin(), end(), other.begin(), other.end());
}

SimpleArray SimpleArray::copy(int start, int count) const {
    const long long length = buffer_->count;
    const long long first = std::clamp<long long>(start, 0, length);
    const long long last =
        std::clamp<long long>(static_cast<long long>(start) + count, first, length);
    SimpleArray result;
    result.appendWords(elements() + first, static_cast<int>(last - first));
    return result;
}

void SimpleArray::merge(const SimpleArray& other, bool keepZeros) {
    const SimpleArray source(other);
    const long long sum = static_cast<long long>(length()) + source.length();
    SimpleArray added;
    if (sum < mergeByTable) {
        for (const long long value : source) {
            if (value == 0 && !keepZeros) continue;
            if (indexOf(value) < 0 && added.indexOf(value) < 0) added.append(value);
        }
    } else {
        SparseArray known;
        // Steps of 8 would move what is found again and again.
        added.setIncrement(static_cast<int>(std::max<long long>(defaultIncrement, sum / 8)));
        for (const long long value : *this) {
            known.set(value, 1);
        }
        for (const long long value : source) {
            if ((value == 0 && !keepZeros) || known.hasKey(value)) continue;
            known.set(value, 1);
            added.append(value);
        }
    }
    appendWords(added.getData(), added.length());
}

void SimpleArray::forEach(void (*visit)(int index, long long* element, long long data),
                          long long data) const {
    const int count = length();
    for (int index = 0; index < count && index < length(); ++index) {
        visit(index, elements() + index, data);
    }
}

} // namespace KrCore
