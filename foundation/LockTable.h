#pragma once

namespace KrCore {

class Lock;

/// The library's 15 locks (LockSlots.h), owned by the caller.
Lock* makeLockTable();
void freeLockTable(Lock* locks);

} // namespace KrCore
