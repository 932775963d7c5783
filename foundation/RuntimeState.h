#pragma once

#include <krcore/foundation/Globals.h>

#include <cstdint>

namespace KrCore {

/// The few words that nearly every call reads, together in one cache line.
struct alignas(64) RuntimeState {
    Globals globals;
    /// The context of the whole process while the library runs single-threaded; then null.
    Context* singleContext = nullptr;
    int initCount = 0;
    bool uiEnabled = false;
    /// The high-resolution clock when the library started, in microseconds.
    std::int64_t startTime = 0;
};

extern constinit RuntimeState runtime;

inline bool isMultiThreaded() { return runtime.globals.locks != nullptr; }

} // namespace KrCore
