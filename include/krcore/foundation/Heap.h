#pragma once

#include <krcore/foundation/Export.h>

#include <cstddef>
#include <new>

namespace KrCore {

/// What the heap throws when memory is exhausted, when a request exceeds 0xFFFFFFE8 bytes, and
/// while the library is not initialised. `what()` is "bad allocation" on every system.
class KR_API OutOfMemory : public std::bad_alloc {
public:
    OutOfMemory() noexcept = default;
    OutOfMemory(const OutOfMemory&) noexcept = default;
    OutOfMemory& operator=(const OutOfMemory&) noexcept = default;
    ~OutOfMemory() override;
    const char* what() const noexcept override;
};

/// The library's heap, and the base that routes a class's `new` and `delete` to it. Small blocks
/// wait in a cache of the calling thread to be used again; everything else comes from the current
/// `Allocator`.
///
/// A block knows the allocator that made it and returns there, whatever allocator is current then.
/// Blocks lie at addresses 8 modulo 16: a class that needs 16-byte alignment cannot live here.
///
/// Every `new` throws `OutOfMemory`. Every `delete` ignores null, and does nothing at all while the
/// library is not initialised, so that a handle that outlives the library may be destroyed.
class KR_API Heap {
public:
    static void* operator new(std::size_t byteCount);
    static void* operator new[](std::size_t byteCount);
    static void operator delete(void* block) noexcept;
    static void operator delete[](void* block) noexcept;

    /// The same through `Allocator::allocMem`, which is told the place in the source.
    static void* operator new(std::size_t byteCount, const char* file, int line);
    static void* operator new[](std::size_t byteCount, const char* file, int line);
    static void operator delete(void* block, const char* file, int line) noexcept;
    static void operator delete[](void* block, const char* file, int line) noexcept;

    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void*, void*) noexcept {}

    /// Resizes a block and returns its new address; a null `block` gives null and allocates
    /// nothing. When memory is short, the allocator is asked once more after its `flush()`, and
    /// then for a fresh block: the result's contents are undefined then and the old block is
    /// neither copied nor freed.
    static void* reAlloc(void* block, std::size_t byteCount);

    /// Gives the blocks that wait in the calling thread's cache back to their allocators. The
    /// statistics drop by these blocks once more, although they were subtracted when they entered
    /// the cache.
    static void flushCache();

    /// The calling thread's cache size in bytes; 102,400 in a new thread. Setting it flushes the
    /// cache even when the size stays the same. A negative size counts as 0, which switches the
    /// cache off.
    static int getCacheSize();
    static void setCacheSize(int byteCount);

    /// Blocks in use and their bytes, headers included, summed over all threads. Figures of threads
    /// that run meanwhile are approximate. Both run on over `InitTerm::exit` and wrap at 32 bits.
    static void getMemoryStatistics(int& blocks, int& bytes);

protected:
    constexpr Heap() noexcept = default;
    ~Heap() = default;

private:
    Heap(const Heap&) = delete;
    Heap& operator=(const Heap&) = delete;
};

} // namespace KrCore
