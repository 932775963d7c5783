#include "support/FailingAllocator.h"
#include "support/HeapFigures.h"

#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/Heap.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <utility>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

/// Switches the cache on for one test. A flush moves the figures for good, so the test takes its
/// blocks out of the cache again, or puts the figures right.
class CacheScope {
public:
    explicit CacheScope(int size = 102400) { Heap::setCacheSize(size); }
    ~CacheScope() { Heap::setCacheSize(0); }
};

std::uintptr_t addressOf(const void* block) { return reinterpret_cast<std::uintptr_t>(block); }

} // namespace

TEST(HeapStatistics, CountGrossBytes) {
    const struct {
        std::size_t request;
        int gross;
    } rows[] = {{0, 16}, {8, 16}, {9, 32}, {312, 320}, {313, 336}, {1000, 1008}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.request);
        const HeapFigures before = HeapFigures::now();
        void* block = Heap::operator new(row.request);
        EXPECT_EQ(before.change(), (HeapFigures{1, row.gross}));
        EXPECT_EQ(addressOf(block) % 16, 8U);
        Heap::operator delete(block);
        EXPECT_EQ(before.change(), HeapFigures{});
    }
}

TEST(HeapStatistics, DropOnceMoreOnAFlush) {
    CacheScope cache;
    const HeapFigures before = HeapFigures::now();
    void* blocks[] = {Heap::operator new(1), Heap::operator new(100), Heap::operator new(312)};
    for (void* block : blocks)
        Heap::operator delete(block);
    EXPECT_EQ(before.change(), HeapFigures{});
    Heap::flushCache();
    EXPECT_EQ(before.change(), (HeapFigures{-3, -16 - 112 - 320}));
    for (const std::size_t request : {1, 100, 312})
        makeUpFor(request);
}

TEST(HeapCache, GivesTheBlockFreedLastFirst) {
    CacheScope cache;
    void* older = Heap::operator new(40);
    void* newer = Heap::operator new(33);
    const std::uintptr_t addresses[] = {addressOf(older), addressOf(newer)};
    Heap::operator delete(older);
    Heap::operator delete(newer);
    newer = Heap::operator new(36);
    older = Heap::operator new(25, __FILE__, __LINE__);
    EXPECT_EQ(addressOf(newer), addresses[1]);
    EXPECT_EQ(addressOf(older), addresses[0]);
    Heap::setCacheSize(0);
    Heap::operator delete(older);
    Heap::operator delete(newer);
}

TEST(HeapCache, HoldsAsManyBlocksAsTheSizeAllows) {
    // N / (20 x gross), for blocks of 16 bytes: the one beyond the limit goes back to its allocator
    // and is not subtracted a second time by the flush.
    const struct {
        int size;
        int limit;
    } rows[] = {{319, 0}, {320, 1}, {959, 2}, {-5, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.size);
        CacheScope cache(row.size);
        EXPECT_EQ(Heap::getCacheSize(), row.size < 0 ? 0 : row.size);
        void* blocks[4];
        for (void*& block : blocks)
            block = Heap::operator new(8);
        for (void* block : blocks)
            Heap::operator delete(block);
        const HeapFigures before = HeapFigures::now();
        Heap::flushCache();
        EXPECT_EQ(before.change(), (HeapFigures{-row.limit, -row.limit * 16}));
        Heap::setCacheSize(0);
        for (int index = 0; index < row.limit; ++index)
            makeUpFor(8);
    }
}

TEST(HeapCache, ReturnsABlockToTheAllocatorThatMadeIt) {
    void* block = nullptr;
    {
        FailingScope otherAllocator(-1, Shortage::Passing);
        block = Heap::operator new(64);
    }
    {
        CacheScope cache;
        const std::uintptr_t address = addressOf(block);
        Heap::operator delete(block);
        block = Heap::operator new(64);
        EXPECT_EQ(addressOf(block), address);
    }
    // By the sanitizers: each allocator frees what it made.
    Heap::operator delete(block);
}

TEST(Heap, RefusesSizesThatItCannotDescribe) {
    const HeapFigures before = HeapFigures::now();
    void* block = Heap::operator new(16);
    std::memset(block, 7, 16);
    for (const std::size_t size : {SIZE_MAX, SIZE_MAX - 8, SIZE_MAX - 23, std::size_t{1} << 32U,
                                   (std::size_t{1} << 32U) + 16, std::size_t{0xFFFFFFE9}}) {
        SCOPED_TRACE(size);
        EXPECT_THROW(Heap::operator new(size), OutOfMemory);
        EXPECT_THROW(Heap::operator new[](size, __FILE__, __LINE__), std::bad_alloc);
        EXPECT_THROW(Heap::reAlloc(block, size), OutOfMemory);
        EXPECT_EQ(Heap::reAlloc(nullptr, size), nullptr);
    }
    EXPECT_EQ(static_cast<char*>(block)[15], 7);
    Heap::operator delete(block);
    EXPECT_EQ(before.change(), HeapFigures{});
}

TEST(Heap, NamesItsExceptionAlikeEverywhere) {
    try {
        Heap::operator new(SIZE_MAX);
        FAIL();
    } catch (const std::bad_alloc& shortage) {
        EXPECT_STREQ(shortage.what(), "bad allocation");
    }
}

TEST(HeapReAlloc, KeepsContentsAndCounts) {
    EXPECT_EQ(Heap::reAlloc(nullptr, 100), nullptr);
    const HeapFigures before = HeapFigures::now();
    void* block = Heap::operator new(25);
    EXPECT_EQ(Heap::reAlloc(block, 40), block) << "40 bytes have the same gross size";
    std::memcpy(block, "twenty-four characters..", 25);
    block = Heap::reAlloc(block, 5000);
    EXPECT_STREQ(static_cast<char*>(block), "twenty-four characters..");
    EXPECT_EQ(before.change(), (HeapFigures{1, 5008}));
    block = Heap::reAlloc(block, 0);
    EXPECT_EQ(before.change(), (HeapFigures{1, 16}));
    Heap::operator delete(block);
}

TEST(HeapReAlloc, AbandonsTheOldBlockWhenTheAllocatorHadToFlush) {
    const HeapFigures before = HeapFigures::now();
    {
        FailingScope shortOfMemory(1, Shortage::UntilFlush);
        void* block = Heap::operator new(100);
        void* fresh = Heap::reAlloc(block, 1000);
        EXPECT_NE(fresh, block);
        EXPECT_EQ(before.change(), (HeapFigures{1, 1008}));
        // The old one is out of the books, and nobody's any more.
        FailingAllocator::instance().freeBlock(static_cast<char*>(block) - 8);
        Heap::operator delete(fresh);
    }
    EXPECT_EQ(before.change(), HeapFigures{});
}

// The library's own containers grow by a variant that moves the contents in this case.
TEST(HeapReAlloc, IsNotHowAnArrayGrows) {
    const HeapFigures before = HeapFigures::now();
    for (const Shortage shortage : {Shortage::Passing, Shortage::Lasting, Shortage::UntilFlush}) {
        forEachFailure(
            [] {
                SimpleArray array;
                array.append(42);
                try {
                    for (int round = 0; round < 100; ++round)
                        array.append(7);
                } catch (const OutOfMemory&) {
                }
                EXPECT_EQ(std::as_const(array)[0], 42);
            },
            shortage);
    }
    EXPECT_EQ(before.change(), HeapFigures{});
}

namespace {

struct Fragile : Root {
    explicit Fragile(bool breaks) {
        if (breaks) throw 1;
    }
};

} // namespace

TEST(Heap, TakesBackWhatAThrowingConstructorLeaves) {
    const HeapFigures before = HeapFigures::now();
    EXPECT_THROW(new Fragile(true), int);
    EXPECT_THROW(new (__FILE__, __LINE__) Fragile(true), int);
    EXPECT_EQ(before.change(), HeapFigures{});
    delete new (__FILE__, __LINE__) Fragile(false);
    alignas(Fragile) unsigned char place[sizeof(Fragile)];
    auto* inPlace = new (place) Fragile(false);
    inPlace->~Fragile();
    EXPECT_EQ(before.change(), HeapFigures{});
}
