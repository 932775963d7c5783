#pragma once

#include "platform/Threads.h"

#include <atomic>

namespace KrCore {

/// Guards what has to be safe before and after the library's locks exist. For a few instructions at
/// a time.
class SpinLock {
public:
    void lock() {
        while (flag_.test_and_set(std::memory_order_acquire))
            Platform::yieldThread();
    }
    void unlock() { flag_.clear(std::memory_order_release); }

private:
    std::atomic_flag flag_;
};

} // namespace KrCore
