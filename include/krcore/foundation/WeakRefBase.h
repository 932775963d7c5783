#pragma once

#include <krcore/foundation/Refcountable.h>

#include <atomic>

namespace KrCore {

/// What is common to all `WeakRef<T>`: a pointer to an object that it does not keep alive. It
/// becomes null when the object's last reference goes, before the object's destructor runs.
class KR_API WeakRefBase {
public:
    /// Nulls every weak reference to `object`. `Refcountable::release` does this by itself.
    static void release(const Refcountable* object);

protected:
    constexpr WeakRefBase() noexcept = default;
    WeakRefBase(const WeakRefBase& other);
    WeakRefBase& operator=(const WeakRefBase& other);
    ~WeakRefBase();

    /// Refers to `target` (null: to nothing) from now on and returns it. An object that is being
    /// destroyed is refused: the holder and the result are null. Throws `OutOfMemory` with the
    /// holder null.
    Refcountable* assign(Refcountable* target);

    /// Borrowed; another thread may destroy the object at any time, see `acquire`.
    Refcountable* target() const { return target_.load(std::memory_order_acquire); }

    /// The object with one more reference, which the caller releases; null when it is gone.
    Refcountable* acquire() const;

private:
    friend struct WeakReferenceTable;

    std::atomic<Refcountable*> target_ = nullptr;
};

} // namespace KrCore
