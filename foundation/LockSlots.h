#pragma once

#include "foundation/RuntimeState.h"

#include <krcore/foundation/Lock.h>
#include <krcore/foundation/LockRef.h>

namespace KrCore {

/// Which table each of the library's locks guards. A lock is held around its own table only, and
/// never while another one is taken.
enum class LockSlot {
    AllocatorRegistry = 0,
    LazyLocks = 2,
    EncoderRegistry = 4,
    LocaleCache = 5,
    ErrorDefinitions = 6,
    WeakReferences = 8,
    Broadcasters = 9, // making the list of listeners
    LiveObjects = 10, // factories, autostore links, generated IDs
    FileSystem = 11,  // current folders, the home folder, names of temporary files
};

constexpr int lockSlotCount = 15;

/// Holds one of the library's locks for a scope; nothing while the library runs single-threaded.
class LibraryLock {
public:
    explicit LibraryLock(LockSlot slot)
        : holder_(runtime.globals.locks ? runtime.globals.locks + static_cast<int>(slot)
                                        : nullptr) {}

private:
    LockRef holder_;
};

} // namespace KrCore
