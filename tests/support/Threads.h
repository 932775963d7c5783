#pragma once

#include <krcore/foundation/Heap.h>

#include <thread>
#include <vector>

namespace KrCore::Testing {

/// Runs `body(index)` in `count` threads at once and waits for them. Their small-block caches are
/// switched off: a cache that goes with its thread would subtract its blocks from the statistics a
/// second time.
template <class Body>
void inThreads(int count, Body body) {
    std::vector<std::thread> threads;
    for (int index = 0; index < count; ++index) {
        threads.emplace_back([&body, index] {
            Heap::setCacheSize(0);
            body(index);
        });
    }
    for (auto& thread : threads)
        thread.join();
}

} // namespace KrCore::Testing
