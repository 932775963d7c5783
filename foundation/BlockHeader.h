#pragma once

#include "foundation/AllocatorRegistry.h"

#include <cstddef>
#include <cstdint>

namespace KrCore {

/// What stands before every block: its gross size, a multiple of 16, with the index of its
/// allocator in the low 4 bits. The second word keeps user pointers at 8 modulo 16.
struct BlockHeader {
    static constexpr std::uint32_t ownerMask = 15;
    /// The largest request whose gross size fits into the word.
    static constexpr std::size_t maxRequest = 0xFFFFFFE8;

    std::uint32_t word;
    std::uint32_t unused;

    static BlockHeader* of(void* block) { return static_cast<BlockHeader*>(block) - 1; }
    static const BlockHeader* of(const void* block) {
        return static_cast<const BlockHeader*>(block) - 1;
    }
    static constexpr std::uint32_t grossFor(std::size_t request) {
        return static_cast<std::uint32_t>((request + 23) & ~std::size_t{ownerMask});
    }

    std::uint32_t gross() const { return word & ~ownerMask; }
    unsigned int owner() const { return word & ownerMask; }
    void* block() { return this + 1; }
};
static_assert(sizeof(BlockHeader) == 8);

inline void giveBack(BlockHeader* header) {
    allocatorRegistry.at(header->owner()).freeBlock(header);
}

} // namespace KrCore
