// The library's life from outside: a program of its own, in which nobody has started it yet.

#include "support/HeapFigures.h"

#include <krcore/foundation.h>
#include <krcore/text/Encoder.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <future>
#include <memory>
#include <string>
#include <thread>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

std::string calls;

/// The compiler is right to warn of what some tests do with a block; this hides it.
void* hidden(void* block) {
    void* volatile copy = block;
    return copy;
}

/// An allocator on malloc that counts how often it is told to flush.
class CountingAllocator : public Allocator {
public:
    void* allocBlock(std::size_t byteCount) override { return std::malloc(byteCount); }
    void freeBlock(void* block) override { std::free(block); }
    void* reallocBlock(void* block, std::size_t byteCount) override {
        return std::realloc(block, byteCount);
    }
    void flush() override { ++flushes; }

    int flushes = 0;
};

} // namespace

TEST(InitTerm, RefusesMemoryBeforeTheStart) {
    EXPECT_FALSE(InitTerm::isInitialized());
    EXPECT_THROW(Heap::operator new(1), OutOfMemory);
    EXPECT_THROW(Heap::reAlloc(nullptr, 1), OutOfMemory);
    EXPECT_THROW(InitTerm::setMT(), OutOfMemory);
    EXPECT_FALSE(InitTerm::isMT());
    alignas(16) char memory[32] = {};
    Heap::operator delete(hidden(memory + 8));
    InitTerm::atExit([] { calls += "never"; });
    EXPECT_EQ(Heap::getCacheSize(), 0);
}

TEST(InitTerm, IsCounted) {
    InitTerm::exit();
    EXPECT_FALSE(InitTerm::isInitialized());
    InitTerm::init();
    InitTerm::init();
    InitTerm::atExit([] { calls += "x"; });
    InitTerm::exit();
    EXPECT_TRUE(InitTerm::isInitialized());
    EXPECT_EQ(calls, "");
    InitTerm::exit();
    EXPECT_FALSE(InitTerm::isInitialized());
    EXPECT_EQ(calls, "x");
    InitTerm::exit();
    InitTerm::init();
    EXPECT_TRUE(InitTerm::isInitialized()) << "a surplus exit is forgotten";
    InitTerm::exit();
}

TEST(InitTerm, CallsExitFunctionsInTheirOrder) {
    calls.clear();
    InitTerm::init();
    InitTerm::atExit([] { calls += "a"; });
    InitTerm::atExit(nullptr);
    InitTerm::atExit([] {
        calls += "b";
        InitTerm::exit();
        InitTerm::atExit([] { calls += InitTerm::isInitialized() ? "d" : "-"; });
        Heap::operator delete(Heap::operator new(10));
    });
    InitTerm::atExit([] {
        calls += "c";
        InitTerm::init();
    });
    InitTerm::exit();
    EXPECT_EQ(calls, "abcd");
    EXPECT_FALSE(InitTerm::isInitialized());
}

TEST(InitTerm, LeavesBehindWhatWasLostAndMarksIt) {
    const HeapFigures before = HeapFigures::now();
    EXPECT_FALSE(InitTerm::isUIEnabled());
    InitTerm::init();
    const HeapFigures started = HeapFigures::now();
    Heap::setCacheSize(0);
    const HeapFigures flushed = HeapFigures::now();
    InitTerm::setStartupSpec("/some/where");
    InitTerm::setStartupSpec(nullptr);
    InitTerm::enableUI(true);
    EXPECT_TRUE(InitTerm::isUIEnabled());
    EXPECT_GT(flushed.change().blocks, 0);
    void* lost = hidden(Heap::operator new(100));
    InitTerm::exit();
    EXPECT_TRUE(InitTerm::isUIEnabled()) << "the switch is the host's own";
    InitTerm::enableUI(false);
    // What start-up left in the cache was subtracted twice; apart from that, the lost block is
    // still counted, and marked by one more.
    EXPECT_EQ(before.change().blocks, flushed.blocks - started.blocks + 1 + 1);
    EXPECT_EQ(before.change().bytes, flushed.bytes - started.bytes + 112);
    Heap::operator delete(hidden(lost));
    std::free(hidden(static_cast<char*>(lost) - 8));
}

TEST(InitTerm, BecomesMultiThreadedForOneLifeOnly) {
    InitTerm::init();
    Lockable object;
    InitTerm::setMT();
    InitTerm::setMT();
    EXPECT_TRUE(InitTerm::isMT());
    EXPECT_NE(Globals::get().locks, nullptr);
    const HeapFigures before = HeapFigures::now();
    {
        Lockable locked;
        locked.createLock();
        locked.createLock();
        EXPECT_EQ(before.change().blocks, 2) << "the lock and the system's part of it";
        locked.lock();
        locked.lock();
        locked.unlock();
        locked.unlock();
        locked.unlock();
        Lockable copy = locked;
        copy = locked;
        EXPECT_EQ(before.change().blocks, 2);
    }
    EXPECT_EQ(before.change(), HeapFigures{});
    InitTerm::exit();
    EXPECT_FALSE(InitTerm::isMT());
    EXPECT_EQ(Globals::get().locks, nullptr);
    InitTerm::init();
    EXPECT_FALSE(InitTerm::isMT());
    EXPECT_EQ(Heap::getCacheSize(), 102400);
    InitTerm::exit();
}

TEST(InitTerm, TakesTheDefaultEncoderFromThreadsThatOutliveTheLibrary) {
    InitTerm::init();
    InitTerm::setMT();
    std::promise<void> isSet;
    std::promise<void> isBack;
    std::thread thread([&] {
        Encoder::setDefault(*Encoder::get("CP1251"));
        isSet.set_value();
        isBack.get_future().wait();
        EXPECT_EQ(&Encoder::getDefault(), &Encoder::getSystem());
    });
    isSet.get_future().wait();
    InitTerm::exit();
    InitTerm::init();
    InitTerm::setMT();
    isBack.set_value();
    thread.join();
    InitTerm::exit();
}

TEST(Allocator, ServesUpToTenOfAHost) {
    // Never removed, so they outlive the library.
    static CountingAllocator allocators[11];
    InitTerm::init();
    Allocator* builtIn = Allocator::get();
    EXPECT_TRUE(Allocator::set(builtIn)) << "takes no entry of its own";
    for (int index = 0; index < 10; ++index)
        EXPECT_TRUE(Allocator::set(&allocators[index])) << index;
    EXPECT_TRUE(Allocator::set(&allocators[3]));
    EXPECT_FALSE(Allocator::set(&allocators[10]));
    EXPECT_EQ(Allocator::get(), &allocators[3]);

    void* block = Heap::operator new(1000);
    EXPECT_TRUE(Allocator::set(nullptr));
    EXPECT_EQ(Allocator::get(), builtIn);
    Heap::operator delete(block);

    EXPECT_FALSE(builtIn->isRethrow());
    builtIn->setRethrow(true);
    EXPECT_TRUE(builtIn->isRethrow());
    EXPECT_EQ(allocators[9].flushes, 0);
    InitTerm::exit();
    EXPECT_EQ(allocators[9].flushes, 1);
    EXPECT_EQ(allocators[10].flushes, 0);
}

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
