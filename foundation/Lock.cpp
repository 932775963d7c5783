#include <krcore/foundation/Lock.h>
#include <krcore/foundation/LockRef.h>
#include <krcore/foundation/Lockable.h>

#include "foundation/AtomicCount.h"
#include "foundation/ContextList.h"
#include "foundation/LockSlots.h"
#include "foundation/LockTable.h"
#include "foundation/ModuleHooks.h"
#include "platform/Mutex.h"

#include <utility>

namespace KrCore {

Lock::Lock() : mutex_(Platform::makeMutex(Heap::operator new(Platform::mutexByteCount()))) {}

Lock::~Lock() {
    Platform::destroyMutex(mutex_);
    Heap::operator delete(mutex_);
}

void Lock::acquire() { Platform::acquireMutex(mutex_); }

void Lock::release() { Platform::releaseMutex(mutex_); }

int Lock::increment(int& counter) { return countUp(counter); }

int Lock::decrement(int& counter) { return countDown(counter); }

LockRef::LockRef(Lock* lock) : lock_(lock) {
    if (lock_) lock_->acquire();
}

LockRef::~LockRef() {
    if (lock_) lock_->release();
}

Lockable::~Lockable() { delete lock_.load(std::memory_order_relaxed); }

void Lockable::createLock() {
    if (!isMultiThreaded()) return;
    LibraryLock guard(LockSlot::LazyLocks);
    if (!lock_.load(std::memory_order_relaxed)) lock_.store(new Lock, std::memory_order_release);
}

void Lockable::lock() const {
    if (Lock* lock = lock_.load(std::memory_order_acquire)) lock->acquire();
}

void Lockable::unlock() const {
    if (Lock* lock = lock_.load(std::memory_order_acquire)) lock->release();
}

Lock* makeLockTable() { return new Lock[lockSlotCount]; }

void freeLockTable(Lock* locks) { delete[] locks; }

// The table is out of sight before it goes, and what follows in the shut-down runs unlocked.
void stopLocks() {
    if (Context* context = presentContext()) context->libraryLock = nullptr;
    freeLockTable(std::exchange(runtime.globals.locks, nullptr));
}

} // namespace KrCore
