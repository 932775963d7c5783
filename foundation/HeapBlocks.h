#pragma once

#include <cstddef>

namespace KrCore {

/// Resizes a heap block like Heap::reAlloc, but keeps its contents even when memory was short and
/// the allocator came up with a fresh block: the old one is copied and freed then. On OutOfMemory
/// the block is as it was. A null `block` makes a new one.
[[nodiscard]] void* growBlock(void* block, std::size_t byteCount);

/// The bytes that fit into the block without resizing it: what was asked for, rounded up.
std::size_t blockCapacity(const void* block);

} // namespace KrCore
