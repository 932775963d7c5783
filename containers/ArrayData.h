#pragma once

#include <krcore/containers/Array.h>
#include <krcore/containers/SparseArray.h>
#include <krcore/values/Variant.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>

namespace KrCore {

/// The vector of an array: a heap block of this head and `capacity` slots. The first `used` slots
/// are `Variant`s, the rest is raw memory. A `Variant` may be moved as bytes: nothing points into
/// it.
struct DenseBlock {
    unsigned int used;
    unsigned int capacity;

    Variant* slots() { return reinterpret_cast<Variant*>(this + 1); }
    const Variant* slots() const { return reinterpret_cast<const Variant*>(this + 1); }
};

/// What arrays share. Indexes below `denseLimit` live in the vector, where `used` never exceeds the
/// length; the others in the sparse part, whose entries beyond the length are hidden.
struct Array::Data : Heap {
    static constexpr unsigned int maxLength = 0xFFFFFFFFU;
    static constexpr unsigned int usualDenseLimit = 1024;

    constexpr Data() noexcept = default;
    Data(const Data&) = delete;
    Data& operator=(const Data&) = delete;

    static Data* create(unsigned int length);
    [[nodiscard]] Data* clone() const;
    /// Gives back one reference, and with the last one all elements, however deep arrays are
    /// nested.
    static void release(Data* data) noexcept;
    bool isShared();

    unsigned int used() const { return dense ? dense->used : 0; }
    Variant* sparseElement(unsigned int index) const {
        return sparse ? toElement(sparse->find(index)) : nullptr;
    }
    Variant* find(unsigned int index) const {
        if (index >= length) return nullptr;
        if (index >= denseLimit) return sparseElement(index);
        return index < used() ? dense->slots() + index : nullptr;
    }

    /// Gives the vector room for `count` slots, at most `denseLimit`.
    void reserveDense(unsigned int count);
    /// The same, and fills up with undefined elements.
    void growDense(unsigned int count);
    void truncateDense(unsigned int count) noexcept;
    SparseArray& needSparse();
    /// The element for writing; it is made, and the length raised, when need be.
    Variant& make(unsigned int index);
    /// The same for a sparse element; a hidden one is emptied.
    Variant& makeSparse(unsigned int index);
    /// Takes the elements from `oldLength` on away again.
    void cutBack(unsigned int oldLength) noexcept;
    /// Frees the sparse elements `from` ... `to - 1`.
    void eraseSparse(unsigned int from, unsigned int to) noexcept;

    /// Calls `visit(index, element)` for each existing element below the length, the dense ones in
    /// order and then the sparse ones in none. It must not change the record.
    template <class Visit>
    void visitElements(Visit&& visit) const;

    /// Moves elements as bytes to raw memory or over undefined elements; where they were is raw
    /// memory then.
    static void relocate(Variant* target, const Variant* source, unsigned int count) noexcept {
        const void* bytes = source;
        std::memmove(static_cast<void*>(target), bytes, count * sizeof(Variant));
    }
    static Variant* toElement(long long word) {
        return reinterpret_cast<Variant*>(static_cast<std::intptr_t>(word));
    }
    static long long toWord(const Variant* element) {
        return reinterpret_cast<std::intptr_t>(element);
    }

    DenseBlock* dense = nullptr;
    SparseArray* sparse = nullptr;
    int refCount = 1;
    unsigned int length = 0;
    unsigned int denseLimit = usualDenseLimit;
    Data* nextReleased = nullptr;

    /// Since the last copy an element was handed out for writing: something may be stored in the
    /// depth of this record. Records with the mark are not shared, so their search is no longer
    /// than the writing was. Threads that copy one array at once may all take the mark away.
    bool hasLent() const {
        return std::atomic_ref(const_cast<bool&>(lent)).load(std::memory_order_relaxed);
    }
    void setLent(bool isLent) { std::atomic_ref(lent).store(isLent, std::memory_order_relaxed); }

    /// Of every empty array. Never counted, never written.
    static Data empty;

private:
    // No destructor: the empty record, which is never destroyed, would need one to be called.
    static void destroy(Data* data) noexcept;
    struct Destroyer {
        void operator()(Data* data) const noexcept { destroy(data); }
    };
    using Owned = std::unique_ptr<Data, Destroyer>;

    bool lent = false;

    void releaseNested(Data*& released) noexcept;
    void copyElements(const Data& source);
};

template <class Visit>
void Array::Data::visitElements(Visit&& visit) const {
    for (unsigned int index = 0; index < used(); ++index) {
        visit(index, dense->slots()[index]);
    }
    if (!sparse) return;
    sparse->visitItems([this, &visit](long long key, long long word) {
        if (key < length) visit(static_cast<unsigned int>(key), *toElement(word));
    });
}

} // namespace KrCore
