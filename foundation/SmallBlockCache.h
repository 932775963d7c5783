#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace KrCore {

/// A count that only its thread changes and other threads may read: as cheap as a plain integer. It
/// wraps.
class SharedCount {
public:
    std::uint32_t get() const { return value_.load(std::memory_order_relaxed); }
    void set(std::uint32_t value) { value_.store(value, std::memory_order_relaxed); }
    void add(std::uint32_t value) { set(get() + value); }

private:
    std::atomic<std::uint32_t> value_ = 0;
};

/// The first user word of a block that waits in a cache.
struct CachedBlock {
    CachedBlock* next;
};

/// Blocks of one gross size, most recently freed first.
struct BlockClass {
    CachedBlock* head = nullptr;
    SharedCount count;
    std::uint32_t limit = 0;
};

/// A thread's small-block cache and its part of the heap statistics.
///
/// A block in use was taken from an allocator, not yet given back, and is not cached: so it is
/// enough to count at the allocators, and the statistics come from subtracting the cached blocks
/// when somebody asks. Taking a block from the cache and putting it back count nothing.
struct SmallBlockCache {
    static constexpr std::uint32_t classCount = 20;
    static constexpr std::uint32_t granularity = 16;
    static constexpr std::uint32_t maxGross = classCount * granularity;
    static constexpr int defaultSize = 102400;

    BlockClass classes[classCount];
    int size = 0;
    /// Blocks and gross bytes taken from allocators less those given back; wraps.
    SharedCount blocks;
    SharedCount bytes;

    static constexpr std::uint32_t classGross(std::uint32_t index) {
        return (index + 1) * granularity;
    }
};

/// Empties the record, without freeing anything, and gives each class its share of `size` bytes.
void resetCache(SmallBlockCache& cache, int size);

/// Gives every cached block back to its allocator.
void flushCache(SmallBlockCache& cache);

} // namespace KrCore
