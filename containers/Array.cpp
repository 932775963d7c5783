#include <krcore/containers/Array.h>

#include "containers/ArrayData.h"
#include "containers/ArrayDiscard.h"
#include "containers/ArrayScratch.h"
#include "foundation/AtomicCount.h"

#include <algorithm>
#include <utility>

namespace KrCore {

Array::Array() : data_(&Data::empty) {}

Array::Array(const Array& other) : data_(other.data_) {
    if (data_ == &Data::empty) return;
    if (data_->hasLent()) data_->setLent(false); // What was handed out may not be written any more.
    countUp(data_->refCount);
}

Array::Array(Array&& other) noexcept : data_(std::exchange(other.data_, &Data::empty)) {}

Array::Array(unsigned int length) : data_(Data::create(length)) {}

Array::~Array() { Data::release(data_); }

Array& Array::operator=(const Array& other) {
    Array copy = other.copyFor(this);
    std::swap(data_, copy.data_);
    return *this;
}

// NOLINTNEXTLINE(performance-noexcept-move-constructor): the copy may fail.
Array& Array::operator=(Array&& other) {
    if (this == &other) return *this;
    if (other.holds(this)) return *this = std::as_const(other);
    // `other` is empty before the old elements go: it may lie in one of them.
    Data* taken = std::exchange(other.data_, &Data::empty);
    Data::release(std::exchange(data_, taken));
    return *this;
}

Array& Array::operator=(int length) {
    setLength(static_cast<unsigned int>(std::max(length, 0)));
    return *this;
}

void Array::makeUnique() {
    if (data_->isShared()) Data::release(std::exchange(data_, data_->clone()));
}

void Array::erase() { Data::release(std::exchange(data_, &Data::empty)); }

unsigned int Array::length() const { return data_->length; }

Variant* Array::get(unsigned int index) const { return data_->find(index); }

bool Array::isDefined(unsigned int index) const {
    const Variant* element = data_->find(index);
    return element && element->isDefined();
}

Variant* Array::getData() const { return data_->used() > 0 ? data_->dense->slots() : nullptr; }

Variant& Array::safeGet(unsigned int index) {
    if (index == Data::maxLength) {
        Variant& absorbed = ArrayScratch::get().absorbed;
        absorbed.erase();
        return absorbed;
    }
    // Also for an element that exists: what is written must not show in the arrays that share it.
    makeUnique();
    Variant& element = data_->make(index);
    data_->setLent(true);
    return element;
}

void Array::setLength(unsigned int length) {
    if (length == 0) {
        erase();
        return;
    }
    if (length == data_->length) return;
    makeUnique();
    if (length < data_->length) {
        truncate(length);
    } else {
        data_->growDense(std::min(length, data_->denseLimit));
        data_->length = length;
    }
}

void Array::truncate(unsigned int length) {
    const auto isCut = [length](long long key) { return key >= length; };
    const unsigned int denseCut = data_->used() - std::min(length, data_->used());
    int sparseCut = 0;
    if (length > data_->denseLimit && data_->sparse) {
        data_->sparse->visitItems([&](long long key, long long) { sparseCut += isCut(key); });
    }
    Discard discard(denseCut, sparseCut);
    if (denseCut > 0) {
        discard.takeDense(data_->dense->slots() + length, denseCut);
        data_->dense->used = length;
    }
    if (sparseCut > 0) {
        data_->sparse->removeIf([&](long long key, long long word) {
            if (isCut(key)) discard.takeSparse(word);
            return isCut(key);
        });
    }
    data_->length = length;
}

bool Array::operator==(const Array& other) const {
    if (data_->length != other.data_->length) return false;
    // Comparing may call host objects, which may change either array: these two stay as they are.
    const Array left = share();
    const Array right = other.share();
    const Variant undefined;
    bool isEqual = true;
    left.data_->visitElements([&](unsigned int index, const Variant& element) {
        const Variant* match = right.data_->find(index);
        isEqual = isEqual && element == (match ? *match : undefined);
    });
    right.data_->visitElements([&](unsigned int index, const Variant& element) {
        isEqual = isEqual && (left.data_->find(index) || undefined == element);
    });
    return isEqual;
}

} // namespace KrCore
