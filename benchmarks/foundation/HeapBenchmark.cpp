// The heap against mimalloc and the C library's malloc. mimalloc is called by its own names, so
// that it serves nobody else in the process.

#include <krcore/foundation/Heap.h>
#include <krcore/foundation/InitTerm.h>

#include <benchmark/benchmark.h>

#ifdef KR_PEER_MIMALLOC
#include <mimalloc.h>
#endif

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

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

struct Malloc {
    static constexpr const char* name = "malloc";
    static void* take(std::size_t size) { return std::malloc(size); }
    static void giveBack(void* block) { std::free(block); }
};

/// Sizes as a library has them: mostly small, a few beyond the small-block cache.
std::vector<std::size_t> randomSizes(std::size_t count) {
    std::vector<std::size_t> sizes;
    std::uint32_t state = 12345;
    for (std::size_t index = 0; index < count; ++index) {
        state = state * 1664525U + 1013904223U;
        const std::uint32_t number = state >> 8U;
        sizes.push_back(number % 16 == 0 ? 313 + number / 16 % 700 : 1 + number / 16 % 312);
    }
    return sizes;
}

template <class Source>
void takeAndGiveBack(benchmark::State& state, std::size_t size) {
    for (auto _ : state) {
        void* block = Source::take(size);
        benchmark::DoNotOptimize(static_cast<void* const&>(block)); // in its register
        Source::giveBack(block);
    }
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

constexpr int defaultCache = 102400;
constexpr int largeCache = 8 << 20;

template <class Source>
void registerPairs() {
    for (const std::size_t size : {16U, 64U, 312U}) {
        benchmark::RegisterBenchmark(
            caseName<Source>("pair of " + std::to_string(size)).c_str(),
            [size](benchmark::State& state) { takeAndGiveBack<Source>(state, size); });
    }
    benchmark::RegisterBenchmark(
        caseName<Source>("batch of 50").c_str(),
        [](benchmark::State& state) { runBatch<Source>(state, std::vector<std::size_t>(50, 64)); });
}

template <class Source>
void registerRandomBatch(const std::string& name, int cacheSize) {
    benchmark::RegisterBenchmark(caseName<Source>(name).c_str(),
                                 [cacheSize](benchmark::State& state) {
                                     KrCore::Heap::setCacheSize(cacheSize);
                                     runBatch<Source>(state, randomSizes(1000));
                                     KrCore::Heap::setCacheSize(defaultCache);
                                 });
}

/// The library stays multi-threaded from here on, so these come last.
template <class Source>
void registerThreads() {
    benchmark::RegisterBenchmark(caseName<Source>("two threads").c_str(),
                                 [](benchmark::State& state) {
                                     if (state.thread_index() == 0) KrCore::InitTerm::setMT();
                                     runBatch<Source>(state, std::vector<std::size_t>(50, 64));
                                 })
        ->Threads(2)
        ->UseRealTime();
}

[[maybe_unused]] const bool registered = [] {
    registerPairs<KrHeap>();
#ifdef KR_PEER_MIMALLOC
    registerPairs<Mimalloc>();
#endif
    registerRandomBatch<KrHeap>("batch of 1000 random", defaultCache);
    registerRandomBatch<Malloc>("batch of 1000 random", defaultCache);
    registerRandomBatch<KrHeap>("batch of 1000 random, 8 MB cache", largeCache);
#ifdef KR_PEER_MIMALLOC
    registerRandomBatch<Mimalloc>("batch of 1000 random, 8 MB cache", defaultCache);
#endif
    registerThreads<KrHeap>();
#ifdef KR_PEER_MIMALLOC
    registerThreads<Mimalloc>();
#endif
    return true;
}();

} // namespace
