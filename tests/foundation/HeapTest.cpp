#include "support/FailingAllocator.h"

#include <krcore/foundation/Heap.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

struct Figures {
    int blocks = 0;
    int bytes = 0;

    static Figures now() {
        Figures figures;
        Heap::getMemoryStatistics(figures.blocks, figures.bytes);
        return figures;
    }
    /// How far the heap has moved since these figures.
    Figures change() const {
        const Figures present = now();
        return {present.blocks - blocks, present.bytes - bytes};
    }
    bool operator==(const Figures&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Figures& figures) {
    return out << figures.blocks << " blocks, " << figures.bytes << " bytes";
}

/// Switches the cache on for one test; a flush would disturb the figures, so tests leave it empty.
class CacheScope {
public:
    explicit CacheScope(int size = 102400) { Heap::setCacheSize(size); }
    ~CacheScope() { Heap::setCacheSize(0); }
};

} // namespace

TEST(HeapStatistics, CountGrossBytes) {
    const struct {
        std::size_t request;
        int gross;
    } rows[] = {{0, 16}, {8, 16}, {9, 32}, {312, 320}, {313, 336}, {1000, 1008}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.request);
        const Figures before = Figures::now();
        void* block = Heap::operator new(row.request);
        EXPECT_EQ(before.change(), (Figures{1, row.gross}));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 16, 8U);
        Heap::operator delete(block);
        EXPECT_EQ(before.change(), Figures{});
    }
}

TEST(HeapStatistics, DropOnceMoreOnAFlush) {
    CacheScope cache;
    const Figures before = Figures::now();
    void* blocks[3] = {Heap::operator new(1), Heap::operator new(100), Heap::operator new(312)};
    for (void* block : blocks)
        Heap::operator delete(block);
    EXPECT_EQ(before.change(), Figures{});
    Heap::flushCache();
    EXPECT_EQ(before.change(), (Figures{-3, -16 - 112 - 320}));
    // Put the figures right for whoever counts after us.
    for (std::size_t size : {1, 100, 312})
        ASSERT_NE(Heap::operator new(size), nullptr);
}
