#pragma once

#include "foundation/LockSlots.h"

#include <krcore/live/LiveBase.h>

namespace KrCore {

/// `LiveBase::getNextID` for objects of several threads: its counter is a plain one.
inline int drawPropertyID() {
    LibraryLock guard(LockSlot::LiveObjects);
    return LiveBase::getNextID();
}

} // namespace KrCore
