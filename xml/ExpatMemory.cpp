#include "xml/ExpatMemory.h"

#include "foundation/HeapBlocks.h"

#include <krcore/foundation/Heap.h>

namespace KrCore {

namespace {

// No exception may leave these: C code that cannot clean up stands between them and the caller.

void* allocate(std::size_t byteCount) {
    try {
        return Heap::operator new(byteCount);
    } catch (const OutOfMemory&) {
        return nullptr;
    }
}

/// Expat resizes blocks that it does not have yet.
void* resize(void* block, std::size_t byteCount) {
    try {
        return growBlock(block, byteCount);
    } catch (const OutOfMemory&) {
        return nullptr;
    }
}

void release(void* block) { Heap::operator delete(block); }

} // namespace

constinit const XML_Memory_Handling_Suite heapForExpat{allocate, resize, release};

} // namespace KrCore
