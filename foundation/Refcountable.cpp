#include <krcore/foundation/Cloneable.h>
#include <krcore/foundation/Refcountable.h>

#include "foundation/AtomicCount.h"

#include <krcore/foundation/WeakRefBase.h>

namespace KrCore {

namespace {

/// The count of an object under destruction: whatever references its destructor takes and drops, it
/// never looks as if the last one went again.
constexpr int dying = -(1 << 30);
constexpr int stillDying = dying / 2;

} // namespace

Refcountable::~Refcountable() = default;

Cloneable::~Cloneable() = default;

void Refcountable::addRef() const { countUp(references_); }

void Refcountable::release() const {
    const int remaining = countDown(references_);
    if (remaining > 0 || remaining < stillDying) return;
    std::atomic_ref(references_).store(dying, std::memory_order_relaxed);
    WeakRefBase::release(this);
    delete this;
}

int Refcountable::getRefCount() const {
    return std::atomic_ref(references_).load(std::memory_order_relaxed);
}

} // namespace KrCore
