#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace KrCore {

/// A word that only its thread changes and other threads may read: as cheap as a plain one.
template <class T>
class SharedWord {
public:
    T get() const { return value_.load(std::memory_order_relaxed); }
    void set(T value) { value_.store(value, std::memory_order_relaxed); }
    /// Counts wrap.
    void add(T value) { set(get() + value); }

private:
    std::atomic<T> value_ = T();
};
using SharedCount = SharedWord<std::uint32_t>;

/// The first user word of a block that waits in a cache.
struct CachedBlock {
    CachedBlock* next;
};

/// Blocks of one gross size, most recently freed first. 16 bytes, so that a block's gross size is
/// also the distance to its class: the shortest way from its header.
class BlockClass {
public:
    CachedBlock* take() {
        CachedBlock* block = head_;
        if (!block) return nullptr;
        head_ = block->next;
        count_.add(-1U);
        return block;
    }

    /// False when the class is full.
    bool put(void* memory) {
        const std::uint32_t count = count_.get();
        if (count >= limit_) return false;
        auto* block = static_cast<CachedBlock*>(memory);
        block->next = head_;
        head_ = block;
        count_.set(count + 1);
        return true;
    }

    std::uint32_t count() const { return count_.get(); }

    /// Empties the record without freeing anything.
    void reset(std::uint32_t limit) {
        head_ = nullptr;
        count_.set(0);
        limit_ = limit;
    }

private:
    CachedBlock* head_ = nullptr;
    SharedCount count_;
    std::uint32_t limit_ = 0;
};
static_assert(sizeof(BlockClass) == 16);

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

    /// The class of blocks of `gross` bytes, which are at most `maxGross`.
    BlockClass& classFor(std::size_t gross) {
        // Instead of dividing for the index and multiplying again.
        static_assert(sizeof(BlockClass) == granularity);
        auto* first = reinterpret_cast<unsigned char*>(classes);
        return *reinterpret_cast<BlockClass*>(first + (gross - granularity));
    }

    static constexpr std::uint32_t classGross(std::uint32_t index) {
        return (index + 1) * granularity;
    }
};

/// Empties the record, without freeing anything, and gives each class its share of `size` bytes.
void resetCache(SmallBlockCache& cache, int size);

/// Gives every cached block back to its allocator.
void flushCache(SmallBlockCache& cache);

} // namespace KrCore
