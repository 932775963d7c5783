#include <krcore/containers/Array.h>

#include "containers/ArrayData.h"
#include "containers/ArrayDiscard.h"
#include "containers/ArrayScratch.h"
#include "foundation/AtomicCount.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

namespace KrCore {

namespace {

/// Behind so many arrays within arrays nobody looks for the place that an array is stored to.
constexpr int maxDetachDepth = 256;

} // namespace

Array::Array() : data_(&Data::empty) {}

Array::Array(const Array& other) : data_(other.data_) {
    if (data_ != &Data::empty) countUp(data_->refCount);
}

Array::Array(Array&& other) noexcept : data_(std::exchange(other.data_, &Data::empty)) {}

Array::Array(unsigned int length) : data_(Data::create(length)) {}

Array::~Array() { Data::release(data_); }

Array& Array::operator=(const Array& other) {
    Array copy(other);
    std::swap(data_, copy.data_);
    return *this;
}

Array& Array::operator=(Array&& other) noexcept {
    std::swap(data_, other.data_);
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

Variant* Array::getData() const { return data_->dense ? data_->dense->slots() : nullptr; }

Variant& Array::safeGet(unsigned int index) {
    if (index == Data::maxLength) {
        Variant& absorbed = ArrayScratch::get().absorbed;
        absorbed.erase();
        return absorbed;
    }
    // Also for an element that exists: what is written must not show in the arrays that share it.
    makeUnique();
    Variant* element = nullptr;
    if (index < data_->denseLimit) {
        if (index >= data_->used()) data_->growDense(index + 1);
        element = data_->dense->slots() + index;
    } else {
        element = &data_->makeSparse(index);
    }
    data_->length = std::max(data_->length, index + 1);
    if (element->getType() == VariantType::Array) data_->hasLentArray = true;
    return *element;
}

void Array::setLength(unsigned int length) {
    if (length == data_->length) return;
    if (length == 0) {
        erase();
        return;
    }
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
    const Array left(*this);
    const Array right(other);
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

Array* Array::createFor(const Variant& slot, const Array& source) {
    std::unique_ptr<Array> copy(new Array(source));
    copy->detachFrom(slot, 0);
    return copy.release();
}

bool Array::reaches(const Variant& slot, int depth) const {
    if (depth > maxDetachDepth) return false;
    const Variant* first = getData();
    if (first && std::less_equal<>()(first, &slot) && std::less<>()(&slot, first + data_->used())) {
        return true;
    }
    if (!data_->sparse && !data_->hasLentArray) return false;
    bool found = false;
    data_->visitElements([&](unsigned int, const Variant& element) {
        if (found || &element == &slot) {
            found = true;
        } else if (data_->hasLentArray && element.getType() == VariantType::Array) {
            found = element.getArray()->reaches(slot, depth + 1);
        }
    });
    return found;
}

void Array::detachFrom(const Variant& slot, int depth) {
    if (!reaches(slot, depth)) return;
    makeUnique();
    data_->visitElements([&slot, depth](unsigned int, Variant& element) {
        if (Array* nested = element.getArray()) nested->detachFrom(slot, depth + 1);
    });
}

} // namespace KrCore
