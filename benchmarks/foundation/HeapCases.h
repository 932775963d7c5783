#pragma once

// What the heap's benchmarks share. There are three programs: one without mimalloc, which takes
// over malloc for the whole process it is linked to; and one for threads, because the library stays
// multi-threaded from then on, while the cases of a program run in any order.

#include <krcore/foundation/Heap.h>

#include <benchmark/benchmark.h>

#ifdef KR_PEER_MIMALLOC
#include <mimalloc.h>
#endif

#include <cstdint>
#include <string>
#include <vector>

struct KrHeap {
    static constexpr const char* name = "krcore";
    static void* take(std::size_t size) { return KrCore::Heap::operator new(size); }
    static void giveBack(void* block) { KrCore::Heap::operator delete(block); }
};

#ifdef KR_PEER_MIMALLOC
struct Mimalloc {
    static constexpr const char* name = "mimalloc";
    static void* take(std::size_t size) { return mi_malloc(size); }
    static void giveBack(void* block) { mi_free(block); }
};
#endif

/// Sizes as a library has them: mostly small, a few beyond the small-block cache.
inline std::vector<std::size_t> randomSizes(std::size_t count) {
    std::vector<std::size_t> sizes;
    std::uint32_t state = 12345;
    for (std::size_t index = 0; index < count; ++index) {
        state = state * 1664525U + 1013904223U;
        const std::uint32_t number = state >> 8U;
        sizes.push_back(number % 16 == 0 ? 313 + number / 16 % 700 : 1 + number / 16 % 312);
    }
    return sizes;
}

/// Takes a block of every size, then gives all back.
template <class Source>
void runBatch(benchmark::State& state, const std::vector<std::size_t>& sizes) {
    std::vector<void*> blocks(sizes.size());
    for (auto _ : state) {
        for (std::size_t index = 0; index < sizes.size(); ++index)
            blocks[index] = Source::take(sizes[index]);
        benchmark::ClobberMemory();
        for (void* block : blocks)
            Source::giveBack(block);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(sizes.size()));
}

template <class Source>
std::string caseName(const std::string& name) {
    return "heap/" + name + "/" + Source::name;
}

/// A batch of random sizes; the cache's size matters to the library alone.
template <class Source>
void registerRandomBatch(const std::string& name, int cacheSize) {
    benchmark::RegisterBenchmark(caseName<Source>(name).c_str(),
                                 [cacheSize](benchmark::State& state) {
                                     const int former = KrCore::Heap::getCacheSize();
                                     KrCore::Heap::setCacheSize(cacheSize);
                                     runBatch<Source>(state, randomSizes(1000));
                                     KrCore::Heap::setCacheSize(former);
                                 });
}
