#include <krcore/foundation/Heap.h>
#include <krcore/foundation/Root.h>

#include "foundation/BlockHeader.h"
#include "foundation/ContextList.h"
#include "foundation/HeapBlocks.h"

#include <algorithm>
#include <cstring>

namespace KrCore {

namespace {

constexpr std::size_t maxCachedRequest = SmallBlockCache::maxGross - sizeof(BlockHeader);

/// The line a block is asked from, when the caller gave it.
struct SourceLine {
    const char* file;
    int line;
};

inline Context* presentHeapContext() {
    if (Context* overriding = runtime.globals.context) [[unlikely]]
        return overriding;
    return presentContext();
}

/// Given the present one or null: the same, made when needed; null when it cannot be had.
inline Context* usableContext(Context* present) {
    if (present && !present->isRetired) [[likely]]
        return present;
    return findContext();
}

inline Context* findHeapContext() { return usableContext(presentHeapContext()); }

inline void count(Context* context, std::uint32_t blocks, std::uint32_t bytes) {
    if (!context) return countForNobody(blocks, bytes);
    context->cache.blocks.add(blocks);
    context->cache.bytes.add(bytes);
}

void* ask(Allocator& allocator, std::uint32_t gross, const SourceLine* place) {
    return place ? allocator.allocMem(gross, place->file, place->line)
                 : allocator.allocBlock(gross);
}

void requireRunning() {
    if (!isRunning()) throw OutOfMemory();
}

/// The gross size, unless it is one that a header cannot hold.
std::uint32_t requireGross(std::size_t byteCount) {
    if (byteCount > BlockHeader::maxRequest) throw OutOfMemory();
    return BlockHeader::grossFor(byteCount);
}

/// A block that does not come from the cache.
[[gnu::noinline]] void* allocateFresh(Context* context, std::size_t byteCount,
                                      const SourceLine* place) {
    requireRunning();
    const std::uint32_t gross = requireGross(byteCount);
    const unsigned int owner = allocatorRegistry.current.load(std::memory_order_acquire);
    Allocator& allocator = allocatorRegistry.at(owner);
    void* memory = ask(allocator, gross, place);
    if (!memory) {
        allocator.flush();
        memory = ask(allocator, gross, place);
        if (!memory) throw OutOfMemory();
    }
    auto* header = static_cast<BlockHeader*>(memory);
    header->word = gross | owner;
    count(usableContext(context), 1, gross);
    return header->block();
}

/// The last block that was freed in this size. It keeps its header, hence its allocator.
inline void* takeCached(SmallBlockCache& cache, std::size_t byteCount) {
    return cache.classFor(BlockHeader::grossFor(byteCount)).take();
}

inline bool putCached(SmallBlockCache& cache, void* block) {
    const std::uint32_t gross = BlockHeader::of(block)->gross();
    if (gross > SmallBlockCache::maxGross) [[unlikely]]
        return false;
    return cache.classFor(gross).put(block);
}

inline void* allocate(std::size_t byteCount, const SourceLine* place) {
    Context* context = presentHeapContext();
    if (context && byteCount <= maxCachedRequest) [[likely]] {
        if (void* block = takeCached(context->cache, byteCount)) [[likely]]
            return block;
    }
    return allocateFresh(context, byteCount, place);
}

/// A block that did not fit into the cache, or whose thread has no context yet.
[[gnu::noinline]] void freeBeyondCache(Context* present, void* block) noexcept {
    if (!block || !isRunning()) return;
    Context* context = usableContext(present);
    const bool isNew = context != present;
    if (isNew && context && putCached(context->cache, block)) return;
    BlockHeader* header = BlockHeader::of(block);
    count(context, -1U, 0U - header->gross());
    giveBack(header);
}

inline void freeBlock(void* block) noexcept {
    Context* context = presentHeapContext();
    if (context && block) [[likely]] {
        if (putCached(context->cache, block)) [[likely]]
            return;
    }
    freeBeyondCache(context, block);
}

/// What becomes of the old block when the allocator can only come up with a fresh one.
enum class OldBlock { Abandon, Move };

void* resize(void* block, std::size_t byteCount, OldBlock fate) {
    requireRunning();
    if (!block) return nullptr;
    BlockHeader* header = BlockHeader::of(block);
    const std::uint32_t oldGross = header->gross();
    const std::uint32_t newGross = requireGross(byteCount);
    if (newGross == oldGross) return block;

    const unsigned int owner = header->owner();
    Allocator& allocator = allocatorRegistry.at(owner);
    void* memory = allocator.reallocBlock(header, newGross);
    if (!memory) {
        allocator.flush();
        memory = allocator.reallocBlock(nullptr, newGross);
        if (!memory) throw OutOfMemory();
        if (fate == OldBlock::Move) {
            std::memcpy(memory, header, std::min(oldGross, newGross));
            allocator.freeBlock(header);
        }
    }
    auto* moved = static_cast<BlockHeader*>(memory);
    moved->word = newGross | owner;
    count(findHeapContext(), 0, newGross - oldGross);
    return moved->block();
}

} // namespace

OutOfMemory::~OutOfMemory() = default;

const char* OutOfMemory::what() const noexcept { return "bad allocation"; }

Root::~Root() = default;

void* Heap::operator new(std::size_t byteCount) { return allocate(byteCount, nullptr); }

void* Heap::operator new[](std::size_t byteCount) { return allocate(byteCount, nullptr); }

void* Heap::operator new(std::size_t byteCount, const char* file, int line) {
    const SourceLine place = {file, line};
    return allocate(byteCount, &place);
}

void* Heap::operator new[](std::size_t byteCount, const char* file, int line) {
    const SourceLine place = {file, line};
    return allocate(byteCount, &place);
}

void Heap::operator delete(void* block) noexcept { freeBlock(block); }

void Heap::operator delete[](void* block) noexcept { freeBlock(block); }

void Heap::operator delete(void* block, const char*, int) noexcept { freeBlock(block); }

void Heap::operator delete[](void* block, const char*, int) noexcept { freeBlock(block); }

void* Heap::reAlloc(void* block, std::size_t byteCount) {
    return resize(block, byteCount, OldBlock::Abandon);
}

void Heap::flushCache() {
    if (Context* context = findHeapContext()) KrCore::flushCache(context->cache);
}

int Heap::getCacheSize() {
    const Context* context = findHeapContext();
    return context ? context->cache.size : 0;
}

void Heap::setCacheSize(int byteCount) {
    Context* context = findHeapContext();
    if (!context) return;
    KrCore::flushCache(context->cache);
    resetCache(context->cache, std::max(byteCount, 0));
}

void Heap::getMemoryStatistics(int& blocks, int& bytes) {
    const HeapTotals totals = heapTotals();
    blocks = static_cast<int>(totals.blocks);
    bytes = static_cast<int>(totals.bytes);
}

void* growBlock(void* block, std::size_t byteCount) {
    if (!block) return Heap::operator new(byteCount);
    return resize(block, byteCount, OldBlock::Move);
}

std::size_t blockCapacity(const void* block) {
    return BlockHeader::of(block)->gross() - sizeof(BlockHeader);
}

} // namespace KrCore
