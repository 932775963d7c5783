#pragma once

#include "foundation/RuntimeState.h"

#include <atomic>

namespace KrCore {

// KrAtomicInc and KrAtomicDec for the library's own use, where the call would cost more than the
// count.

inline int countUp(int& counter) {
    if (isMultiThreaded()) return std::atomic_ref(counter).fetch_add(1) + 1;
    return ++counter;
}

inline int countDown(int& counter) {
    if (isMultiThreaded()) return std::atomic_ref(counter).fetch_sub(1) - 1;
    return --counter;
}

} // namespace KrCore
