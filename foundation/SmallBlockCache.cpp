#include "foundation/SmallBlockCache.h"

#include "foundation/BlockHeader.h"

namespace KrCore {

void resetCache(SmallBlockCache& cache, int size) {
    cache.size = size;
    for (std::uint32_t index = 0; index < SmallBlockCache::classCount; ++index) {
        cache.classes[index].reset(
            static_cast<std::uint32_t>(size) /
            (SmallBlockCache::classCount * SmallBlockCache::classGross(index)));
    }
}

// Kept: a cached block left the statistics when it entered the cache, and leaves them once more
// here. That is one subtraction for going back to its allocator, as everywhere, and one for
// nothing.
void flushCache(SmallBlockCache& cache) {
    for (std::uint32_t index = 0; index < SmallBlockCache::classCount; ++index) {
        while (CachedBlock* block = cache.classes[index].take()) {
            giveBack(BlockHeader::of(block));
            cache.blocks.add(-2U); // held by HeapStatistics.DropOnceMoreOnAFlush
            cache.bytes.add(-2U * SmallBlockCache::classGross(index));
        }
    }
}

} // namespace KrCore
