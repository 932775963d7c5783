#include "ScriptHeap.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace krhost {

namespace {

/// Stands in front of every block and keeps what follows aligned for any type.
struct alignas(std::max_align_t) Header {
    std::size_t size;
};

Header* headerOf(void* block) { return static_cast<Header*>(block) - 1; }

constexpr std::size_t largestBlock = SIZE_MAX - sizeof(Header);

} // namespace

duk_context* ScriptHeap::createContext() {
    return duk_create_heap(allocate, reallocate, release, this, fatal);
}

void* ScriptHeap::allocate(void* heap, duk_size_t size) {
    if (size == 0 || size > largestBlock) return nullptr;
    auto* header = static_cast<Header*>(std::malloc(sizeof(Header) + size));
    if (!header) return nullptr;
    header->size = size;
    auto& self = *static_cast<ScriptHeap*>(heap);
    ++self.blocks_;
    self.bytes_ += size;
    return header + 1;
}

void* ScriptHeap::reallocate(void* heap, void* block, duk_size_t size) {
    if (!block) return allocate(heap, size);
    if (size == 0) {
        release(heap, block);
        return nullptr;
    }
    if (size > largestBlock) return nullptr;
    const std::size_t oldSize = headerOf(block)->size;
    auto* header = static_cast<Header*>(std::realloc(headerOf(block), sizeof(Header) + size));
    if (!header) return nullptr;
    header->size = size;
    auto& self = *static_cast<ScriptHeap*>(heap);
    self.bytes_ += size - oldSize; // wraps and comes out right when the block shrinks
    return header + 1;
}

void ScriptHeap::release(void* heap, void* block) {
    if (!block) return;
    auto& self = *static_cast<ScriptHeap*>(heap);
    --self.blocks_;
    self.bytes_ -= headerOf(block)->size;
    std::free(headerOf(block));
}

void ScriptHeap::fatal(void*, const char* message) {
    std::fprintf(stderr, "krhost: the script engine cannot go on: %s\n", message ? message : "");
    std::abort();
}

} // namespace krhost
