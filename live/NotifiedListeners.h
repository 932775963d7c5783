#pragma once

#include <krcore/containers/SparseArray.h>

#include <cstdint>
#include <memory>
#include <new>

namespace KrCore {

class Listener;

/// Who has been called during one delivery. The first ones stand in an array on the stack, so that
/// a delivery to fewer of them allocates nothing. Without memory for more the rest is not recorded:
/// a delivery goes on, since a dying broadcaster has no way to report that it did not.
class NotifiedListeners {
public:
    void add(Listener* listener) {
        if (count_ < capacity) {
            first_[count_++] = listener;
        } else {
            addToOthers(listener);
        }
    }

    bool contains(Listener* listener) const {
        for (int i = 0; i < count_; ++i) {
            if (first_[i] == listener) return true;
        }
        return others_ && others_->hasKey(keyOf(listener));
    }

private:
    static constexpr int capacity = 128;

    // Objects with a virtual table lie at multiples of 8, and the map hashes by the low bits.
    static long long keyOf(Listener* listener) {
        return static_cast<long long>(reinterpret_cast<std::intptr_t>(listener) >> 3);
    }

    void addToOthers(Listener* listener) {
        try {
            if (!others_) others_ = std::make_unique<SparseArray>();
            others_->set(keyOf(listener), 1);
        } catch (const std::bad_alloc&) {
        }
    }

    int count_ = 0;
    Listener* first_[capacity];
    std::unique_ptr<SparseArray> others_;
};

} // namespace KrCore
