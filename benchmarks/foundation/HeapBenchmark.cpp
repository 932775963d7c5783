// The small-block cache against mimalloc.

#include "foundation/HeapCases.h"

namespace {

template <class Source>
void takeAndGiveBack(benchmark::State& state, std::size_t size) {
    for (auto _ : state) {
        void* block = Source::take(size);
        benchmark::DoNotOptimize(static_cast<void* const&>(block)); // in its register
        Source::giveBack(block);
    }
}

constexpr int largeCache = 8 << 20;

template <class Source>
void registerCases() {
    for (const std::size_t size : {16U, 64U, 312U}) {
        benchmark::RegisterBenchmark(
            caseName<Source>("pair of " + std::to_string(size)).c_str(),
            [size](benchmark::State& state) { takeAndGiveBack<Source>(state, size); });
    }
    benchmark::RegisterBenchmark(
        caseName<Source>("batch of 50").c_str(),
        [](benchmark::State& state) { runBatch<Source>(state, std::vector<std::size_t>(50, 64)); });
    registerRandomBatch<Source>("batch of 1000 random, 8 MB cache", largeCache);
}

[[maybe_unused]] const bool registered = [] {
    registerCases<KrHeap>();
#ifdef KR_PEER_MIMALLOC
    registerCases<Mimalloc>();
#endif
    return true;
}();

} // namespace
