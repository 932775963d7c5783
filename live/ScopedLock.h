#pragma once

#include "foundation/RuntimeState.h"

#include <krcore/foundation/Lockable.h>

namespace KrCore {

/// Holds the lock of a manager, component or object for a scope. Such locks are made when they are
/// first needed, and only in multi-threaded mode.
class ScopedLock {
public:
    explicit ScopedLock(Lockable& lockable) : lockable_(isMultiThreaded() ? &lockable : nullptr) {
        if (!lockable_) return;
        lockable_->createLock();
        lockable_->lock();
    }
    ~ScopedLock() {
        if (lockable_) lockable_->unlock();
    }
    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;

private:
    Lockable* lockable_;
};

} // namespace KrCore
