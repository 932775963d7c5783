#include "foundation/AllocatorRegistry.h"

#include "foundation/ContextList.h"
#include "foundation/LockSlots.h"
#include "foundation/ModuleHooks.h"

#include <cstdlib>
#include <new>

namespace KrCore {

constinit AllocatorRegistry allocatorRegistry;

namespace {

/// The process's own heap.
class DefaultAllocator final : public Allocator {
public:
    void* allocMem(std::size_t byteCount, const char*, int) override {
        return allocBlock(byteCount);
    }
    void* allocBlock(std::size_t byteCount) override { return std::malloc(byteCount); }
    void freeBlock(void* block) override { std::free(block); }
    void* reallocBlock(void* block, std::size_t byteCount) override {
        return std::realloc(block, byteCount);
    }
    void flush() override {}
};

constexpr unsigned int noEntry = AllocatorRegistry::size;

/// The entry that holds `allocator`, else the first empty one of the host, which then receives it.
unsigned int entryFor(Allocator* allocator) {
    for (unsigned int index = 0; index < AllocatorRegistry::size; ++index) {
        Allocator* entry = allocatorRegistry.entries[index];
        if (entry == allocator) return index;
        if (entry || index == 0) continue;
        allocatorRegistry.entries[index] = allocator;
        return index;
    }
    return noEntry;
}

} // namespace

Allocator::~Allocator() = default;

void* Allocator::allocMem(std::size_t byteCount, const char*, int) { return allocBlock(byteCount); }

void Allocator::flush() {}

Allocator* Allocator::get() {
    LibraryLock guard(LockSlot::AllocatorRegistry);
    return allocatorRegistry.entries[allocatorRegistry.current];
}

bool Allocator::set(Allocator* allocator) {
    LibraryLock guard(LockSlot::AllocatorRegistry);
    const unsigned int index = allocator ? entryFor(allocator) : 0;
    if (index == noEntry) return false;
    allocatorRegistry.current = index;
    return true;
}

// The built-in allocator has to exist before the heap works, so it comes from malloc itself.
void startAllocators() {
    void* place = std::malloc(sizeof(DefaultAllocator));
    if (!place) throw OutOfMemory();
    allocatorRegistry.entries[0] = new (place) DefaultAllocator;
    allocatorRegistry.current = 0;
}

void stopAllocators() {
    for (auto& entry : allocatorRegistry.entries) {
        if (Allocator* allocator = entry) allocator->flush();
    }
    // Kept: a count that is not back at 0 is made to look worse by one.
    markRemainingBlocks(); // held by InitTerm.LeavesBehindWhatWasLostAndMarksIt
    Allocator* builtIn = allocatorRegistry.entries[0].exchange(nullptr);
    if (!builtIn) return;
    builtIn->~Allocator();
    std::free(builtIn);
}

} // namespace KrCore
