#pragma once

#include "foundation/RuntimeState.h"

#include <atomic>

namespace KrCore {

// KrAtomicInc and KrAtomicDec for the library's own use, where the call would cost more than the
// count. They wrap.

inline int addTo(int& counter, int step) {
    const auto sum = [step](int value) {
        return static_cast<int>(static_cast<unsigned int>(value) + static_cast<unsigned int>(step));
    };
    if (isMultiThreaded()) return sum(std::atomic_ref(counter).fetch_add(step));
    return counter = sum(counter);
}

inline int countUp(int& counter) { return addTo(counter, 1); }

inline int countDown(int& counter) { return addTo(counter, -1); }

} // namespace KrCore
