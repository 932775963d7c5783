#pragma once

#include <krcore/foundation/Heap.h>

namespace KrCore {

namespace Platform {
struct Mutex;
}

/// A mutex. The thread that holds it may acquire it again and releases it as often. A waiting
/// thread spins for a moment before it sleeps.
class KR_API Lock : public Heap {
public:
    Lock();
    ~Lock();

    void acquire();
    /// Ignored in a thread that does not hold the lock.
    void release();

    /// `KrAtomicInc` and `KrAtomicDec`.
    static int increment(int& counter);
    static int decrement(int& counter);

private:
    Platform::Mutex* mutex_;
};

} // namespace KrCore
