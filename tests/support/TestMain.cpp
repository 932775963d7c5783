// Starts the library once for all tests of a program and checks at the end that it gave everything
// back.

#include "support/HeapFigures.h"

#include <krcore/foundation/InitTerm.h>

#include <gtest/gtest.h>

#include <cstdio>

using namespace KrCore;
using namespace KrCore::Testing;

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    HeapFigures expected = HeapFigures::now();
    InitTerm::init();
    const HeapFigures started = HeapFigures::now();
    // A flush subtracts cached blocks a second time, so the cache is off and the figures are exact.
    Heap::setCacheSize(0);
    // What start-up had left in the cache is subtracted a second time here and never comes back.
    const HeapFigures flushed = HeapFigures::now();
    expected.blocks += flushed.blocks - started.blocks;
    expected.bytes += flushed.bytes - started.bytes;
#ifdef KR_TEST_MULTI_THREADED
    InitTerm::setMT();
#endif
    int result = RUN_ALL_TESTS();
    InitTerm::exit();
    const HeapFigures after = HeapFigures::now();
    // Shut-down itself adds one to a block count that is not zero.
    if (expected.blocks != 0) ++expected.blocks;
    if (after.blocks != expected.blocks || after.bytes != expected.bytes) {
        std::fprintf(stderr, "LEAK: %d blocks, %d bytes left after shut-down\n",
                     after.blocks - expected.blocks, after.bytes - expected.bytes);
        result = 1;
    }
    return result;
}
