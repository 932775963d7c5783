#pragma once

#include "containers/ArrayData.h"

namespace KrCore {

/// Elements taken out of a record, destroyed when the record is whole again: the end of a live
/// object may call its host, and the host may use the array.
class Array::Discard {
public:
    Discard(unsigned int denseCount, int sparseCount) {
        sparse_.setSize(sparseCount);
        dense_.reserveDense(
            denseCount); // The last that can fail, as nobody would free the block then.
    }
    Discard(const Discard&) = delete;
    Discard& operator=(const Discard&) = delete;
    ~Discard() {
        dense_.truncateDense(0);
        Heap::operator delete(dense_.dense);
        for (int index = 0; index < sparseUsed_; ++index) {
            delete Data::toElement(sparse_[index]);
        }
    }

    /// Takes `count` elements as bytes; what is left behind is raw memory.
    void takeDense(Variant* elements, unsigned int count) noexcept {
        if (count == 0) return;
        Data::relocate(dense_.dense->slots(), elements, count);
        dense_.dense->used = count;
    }
    void takeSparse(long long word) noexcept { sparse_[sparseUsed_++] = word; }

private:
    Data dense_;
    SimpleArray sparse_;
    int sparseUsed_ = 0;
};

} // namespace KrCore
