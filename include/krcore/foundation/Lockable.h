#pragma once

#include <krcore/foundation/Export.h>

#include <atomic>

namespace KrCore {

class Lock;

/// The base of objects with a lock of their own, made on demand and in multi-threaded mode only. A
/// copy starts without a lock, and assignment leaves the target's lock as it is.
class KR_API Lockable {
public:
    constexpr Lockable() noexcept = default;
    Lockable(const Lockable&) noexcept {}
    Lockable& operator=(const Lockable&) noexcept { return *this; }
    ~Lockable();

    /// Makes the lock in multi-threaded mode unless there is one.
    void createLock();

    /// Both do nothing while there is no lock. An `unlock` whose `lock` met no lock yet is ignored
    /// too.
    void lock() const;
    void unlock() const;

private:
    std::atomic<Lock*> lock_ = nullptr;
};

} // namespace KrCore
