#pragma once

#include "foundation/Context.h"
#include "foundation/RuntimeState.h"
#include "platform/ThreadLocal.h"

#include <atomic>

namespace KrCore {

inline bool isRunning() {
    return std::atomic_ref(runtime.initCount).load(std::memory_order_relaxed) > 0;
}

/// The calling thread's context if it has one; for the heap, which looks at every block. Null or
/// retired while the library is down.
inline Context* presentContext() {
    if (runtime.singleContext) [[likely]]
        return runtime.singleContext;
    return static_cast<Context*>(Platform::threadSlot());
}

/// The same, made or taken up again when needed; null when there is no memory for it or the library
/// is down.
Context* findContext();

/// From now on each thread has its own context, and the single one belongs to the calling thread.
/// Throws OutOfMemory with nothing changed.
void splitContexts();

/// What was counted outside any context: contexts that ended, and threads that could not get one.
void countForNobody(std::uint32_t blocks, std::uint32_t bytes);

/// The heap statistics of all contexts together.
struct HeapTotals {
    std::uint32_t blocks = 0;
    std::uint32_t bytes = 0;
};
HeapTotals heapTotals();

/// At shut-down: adds one to the block count if it is not 0.
void markRemainingBlocks();

} // namespace KrCore
