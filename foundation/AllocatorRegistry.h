#pragma once

#include <krcore/foundation/Allocator.h>

#include <atomic>

namespace KrCore {

/// The allocators whose blocks may be about. A block's header names its allocator by the index
/// here.
struct AllocatorRegistry {
    /// The built-in allocator and ten of the host; the index fits into the low 4 bits of a header.
    static constexpr unsigned int size = 11;

    std::atomic<Allocator*> entries[size] = {};
    /// Read by the heap without the lock, since allocation happens under other locks.
    std::atomic<unsigned int> current = 0;

    Allocator& at(unsigned int index) const {
        return *entries[index].load(std::memory_order_acquire);
    }
};

extern constinit AllocatorRegistry allocatorRegistry;

} // namespace KrCore
