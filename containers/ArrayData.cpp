#include "containers/ArrayData.h"

#include "foundation/AtomicCount.h"
#include "foundation/HeapBlocks.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <utility>

namespace KrCore {

namespace {

constexpr unsigned int firstCapacity = 8;
/// Arrays made longer than this start with a short vector and keep the rest in the sparse part.
constexpr unsigned int longestDenseArray = 4096;
constexpr unsigned int denseLimitOfLongArrays = 16;

unsigned int capacityFor(unsigned int count) {
    unsigned int capacity = firstCapacity;
    while (capacity < count) {
        capacity *= 2;
    }
    return capacity;
}

} // namespace

constinit Array::Data Array::Data::empty;

void Array::Data::destroy(Data* data) noexcept {
    data->truncateDense(0);
    Heap::operator delete(data->dense);
    data->eraseSparse(0, maxLength); // No index is as high as that.
    delete data->sparse;
    delete data;
}

Array::Data* Array::Data::create(unsigned int length) {
    if (length == 0) return &empty;
    Owned data(new Data);
    if (length > longestDenseArray) {
        data->denseLimit = denseLimitOfLongArrays;
        data->growDense(denseLimitOfLongArrays);
        data->needSparse();
    } else {
        data->denseLimit = std::max(capacityFor(length), usualDenseLimit);
        data->growDense(length);
    }
    data->length = length;
    return data.release();
}

Array::Data* Array::Data::clone() const {
    Owned copy(new Data);
    copy->denseLimit = denseLimit;
    copy->copyElements(*this);
    copy->length = length;
    return copy.release();
}

void Array::Data::copyElements(const Data& source) {
    reserveDense(source.used());
    for (; used() < source.used(); ++dense->used) {
        new (dense->slots() + used()) Variant(source.dense->slots()[used()]);
    }
    if (!source.sparse) return;
    // The hidden elements as well: the copy shall show them again as the original does.
    needSparse();
    source.sparse->visitItems([this](long long key, long long word) {
        std::unique_ptr<Variant> element(new Variant(*toElement(word)));
        sparse->set(key, toWord(element.get()));
        (void)element.release();
    });
}

bool Array::Data::isShared() {
    return this == &empty || std::atomic_ref(refCount).load(std::memory_order_acquire) > 1;
}

void Array::Data::release(Data* data) noexcept {
    if (data == &empty || countDown(data->refCount) > 0) return;
    Data* released = data;
    while (released) {
        Data* dying = std::exchange(released, released->nextReleased);
        dying->releaseNested(released);
        destroy(dying);
    }
}

/// Takes the arrays among the elements apart first, and lists those that nobody else holds: their
/// destructors would go one level deeper each.
void Array::Data::releaseNested(Data*& released) noexcept {
    const auto detach = [&released](Variant& element) {
        if (element.getType() != VariantType::Array) return;
        Data* nested = std::exchange(element.getArray()->data_, &empty);
        if (nested == &empty || countDown(nested->refCount) > 0) return;
        nested->nextReleased = released;
        released = nested;
    };
    for (unsigned int index = 0; index < used(); ++index) {
        detach(dense->slots()[index]);
    }
    if (sparse) {
        sparse->visitItems([&detach](long long, long long word) { detach(*toElement(word)); });
    }
}

void Array::Data::reserveDense(unsigned int count) {
    if (count == 0 || (dense && count <= dense->capacity)) return;
    const unsigned int capacity = capacityFor(count);
    const bool isNew = !dense;
    dense = static_cast<DenseBlock*>(
        growBlock(dense, sizeof(DenseBlock) + std::size_t(capacity) * sizeof(Variant)));
    if (isNew) dense->used = 0;
    dense->capacity = capacity;
}

void Array::Data::growDense(unsigned int count) {
    reserveDense(count);
    for (; used() < count; ++dense->used) {
        new (dense->slots() + used()) Variant();
    }
}

void Array::Data::truncateDense(unsigned int count) noexcept {
    while (used() > count) {
        dense->slots()[--dense->used].~Variant();
    }
}

SparseArray& Array::Data::needSparse() {
    if (!sparse) sparse = new SparseArray;
    return *sparse;
}

Variant& Array::Data::make(unsigned int index) {
    Variant* element = nullptr;
    if (index >= denseLimit) {
        element = &makeSparse(index);
    } else {
        if (index >= used()) growDense(index + 1);
        element = dense->slots() + index;
    }
    length = std::max(length, index + 1);
    return *element;
}

Variant& Array::Data::makeSparse(unsigned int index) {
    if (Variant* element = sparseElement(index)) {
        if (index >= length) element->erase();
        return *element;
    }
    std::unique_ptr<Variant> element(new Variant);
    needSparse().set(index, toWord(element.get()));
    return *element.release();
}

void Array::Data::cutBack(unsigned int oldLength) noexcept {
    truncateDense(oldLength);
    eraseSparse(oldLength, length);
    length = oldLength;
}

void Array::Data::eraseSparse(unsigned int from, unsigned int to) noexcept {
    if (!sparse) return;
    sparse->removeIf([from, to](long long key, long long word) {
        if (key < from || key >= to) return false;
        delete toElement(word);
        return true;
    });
}

} // namespace KrCore
