// The heap in multi-threaded mode against mimalloc.

#include "foundation/HeapCases.h"

#include <krcore/foundation/InitTerm.h>

namespace {

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
    registerThreads<KrHeap>();
#ifdef KR_PEER_MIMALLOC
    registerThreads<Mimalloc>();
#endif
    return true;
}();

} // namespace
