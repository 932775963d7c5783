#pragma once

#include <krcore/foundation/Export.h>

namespace KrCore {

/// The library's life. Every component of a host calls `init` before it uses anything else and
/// `exit` when it is done; only the first `init` and the last `exit` do the work. The host calls
/// them one at a time, and joins or stops its other threads before the last `exit`.
class KR_API InitTerm {
public:
    /// Throws `OutOfMemory` when the library cannot be started; the count is 0 again then. Inside
    /// the shut-down it is forgotten.
    static void init();
    /// Ignored when the library is not initialised, and inside the shut-down itself.
    static void exit();
    static bool isInitialized();

    /// Calls `function` at the beginning of the shut-down, while everything still works; first
    /// registered, first called. One that is registered by an exit function is called after the
    /// others. Ignored when null and while the library is not initialised.
    static void atExit(void (*function)());

    /// Switches to multi-threaded mode, for the rest of this life of the library: reference counts
    /// become atomic, locks come into being and each thread gets a context of its own. To be called
    /// after `init` and before a second thread uses the library.
    static void setMT();
    static bool isMT();

    /// Whether the library may show dialogs; false at first. Can be set at any time, and stays over
    /// the lives of the library.
    static void enableUI(bool enable);
    static bool isUIEnabled();

    /// The place the host was started from: its folder or its program, as a path in the system's
    /// own form and bytes; null is ignored. After `init`, and before other threads ask for the
    /// folder.
    static void setStartupSpec(const char* path);

    InitTerm() = delete;
};

} // namespace KrCore
