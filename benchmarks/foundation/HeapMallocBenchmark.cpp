// The heap as it starts, of whose blocks many pass by the cache, against the C library's malloc.

#include "foundation/HeapCases.h"

#include <cstdlib>

namespace {

struct Malloc {
    static constexpr const char* name = "malloc";
    static void* take(std::size_t size) { return std::malloc(size); }
    static void giveBack(void* block) { std::free(block); }
};

constexpr int defaultCache = 102400;

[[maybe_unused]] const bool registered = [] {
    registerRandomBatch<KrHeap>("batch of 1000 random", defaultCache);
    registerRandomBatch<Malloc>("batch of 1000 random", defaultCache);
    return true;
}();

} // namespace
