#include "foundation/EventState.h"
#include "support/HeapFigures.h"
#include "support/Threads.h"

#include <krcore/foundation.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <set>
#include <vector>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

/// A thread that does what it is told, without a cache of its own.
class Worker : public Thread {
public:
    explicit Worker(void (*body)(Worker&) = nullptr) : body_(body) {}
    ~Worker() override {
        while (hasStarted && isActive())
            sleep(0);
    }

    void begin() {
        hasStarted = true;
        start();
        start();
    }
    void run() override {
        Heap::setCacheSize(0);
        ownId = getCurrentID();
        if (body_) body_(*this);
    }

    Event ready, go;
    unsigned int ownId = 0;
    bool hasStarted = false;

private:
    void (*body_)(Worker&);
};

} // namespace

TEST(Thread, RunsOnceItIsStarted) {
    Worker worker([](Worker& self) {
        self.ready.signal();
        self.go.wait();
    });
    EXPECT_EQ(worker.getError(), 0);
    EXPECT_TRUE(worker.isActive());
    EXPECT_NE(worker.getID(), 0U);
    EXPECT_EQ(worker.ownId, 0U);
    worker.begin();
    worker.ready.wait();
    EXPECT_EQ(worker.ownId, worker.getID());
    EXPECT_TRUE(worker.isActive());
    worker.go.signal();
    while (worker.isActive())
        Thread::sleep(0);
    worker.start();
    EXPECT_FALSE(worker.isActive());
}

TEST(Thread, NamesThreadsByDifferentNumbers) {
    EXPECT_EQ(Thread::getCurrentID(), 0U) << "this one initialised the library";
    std::set<unsigned int> ids;
    std::vector<std::unique_ptr<Worker>> workers;
    for (int index = 0; index < 8; ++index) {
        workers.push_back(std::make_unique<Worker>());
        ids.insert(workers.back()->getID());
    }
    EXPECT_EQ(ids.size(), 8U);
    EXPECT_EQ(ids.count(0), 0U);
    // Half of them are never started and end with their objects.
    for (std::size_t index = 0; index < workers.size(); index += 2)
        workers[index]->begin();
}

TEST(Thread, RestartsTheLapTimerOfItsMaker) {
    Thread::getHiResTimer();
    const std::int64_t begin = Time::getHiResTimer();
    std::int64_t making = begin;
    while (making < begin + 2000)
        making = Time::getHiResTimer();
    Worker worker;
    const std::int64_t lap = Thread::getHiResTimer();
    EXPECT_LE(lap, Time::getHiResTimer() - making);
}

TEST(Event, LetsOneWaiterThroughForEachSignal) {
    Event event;
    event.signal();
    event.signal();
    event.wait();

    std::atomic<int> through = 0;
    Event done;
    std::thread waiters[2];
    for (auto& waiter : waiters) {
        waiter = std::thread([&] {
            Heap::setCacheSize(0);
            event.wait();
            ++through;
            done.signal();
        });
    }
    event.signal();
    done.wait();
    EXPECT_EQ(through, 1) << "the second signal above did not add up";
    event.signal();
    for (auto& waiter : waiters)
        waiter.join();
    EXPECT_EQ(through, 2);
}

TEST(Event, FreesItsWaitersWhenItGoes) {
    const HeapFigures before = HeapFigures::now();
    for (int round = 0; round < 50; ++round) {
        // The cell alone tells when all threads are inside.
        EventState* event = EventState::make();
        std::thread waiters[3];
        for (auto& waiter : waiters) {
            waiter = std::thread([event] {
                Heap::setCacheSize(0);
                event->wait();
            });
        }
        while (event->holders() < 4)
            std::this_thread::yield();
        if (round % 2 == 0) event->signal();
        event->close();
        for (auto& waiter : waiters)
            waiter.join();
    }
    EXPECT_EQ(before.change(), HeapFigures{});
}

TEST(Lock, ExcludesOtherThreadsAndNotItsHolder) {
    Lock lock;
    int counter = 0;
    inThreads(4, [&](int) {
        for (int round = 0; round < 2000; ++round) {
            LockRef outer(&lock);
            CriticalSection inner(&lock);
            ++counter;
        }
    });
    EXPECT_EQ(counter, 8000);
}

TEST(Lock, IgnoresAReleaseByAnotherThread) {
    Lock lock;
    Event released;
    volatile int counter = 0;
    const auto countUp = [&counter] {
        for (int round = 0; round < 20000; ++round)
            counter = counter + 1;
    };
    lock.acquire();
    std::thread other([&] {
        Heap::setCacheSize(0);
        lock.release();
        released.signal();
        LockRef guard(&lock);
        countUp();
    });
    released.wait();
    countUp();
    lock.release();
    other.join();
    EXPECT_EQ(counter, 40000) << "counted at the same time";
}

TEST(Lockable, MakesOneLockForAllThreads) {
    Lockable object;
    int counter = 0;
    inThreads(4, [&](int) {
        object.createLock();
        for (int round = 0; round < 1000; ++round) {
            object.lock();
            ++counter;
            object.unlock();
        }
    });
    EXPECT_EQ(counter, 4000);
}

TEST(Refcountable, CountsExactlyInAllThreads) {
    int counter = 0;
    inThreads(4, [&](int) {
        for (int round = 0; round < 10000; ++round)
            KrAtomicInc(&counter);
        for (int round = 0; round < 5000; ++round)
            KrAtomicDec(&counter);
    });
    EXPECT_EQ(counter, 20000);
}

TEST(HeapThreads, FreeEachOthersBlocks) {
    const HeapFigures before = HeapFigures::now();
    std::vector<std::atomic<void*>> slots(64);
    inThreads(4, [&](int thread) {
        for (int round = 0; round < 20000; ++round) {
            const std::size_t size = static_cast<std::size_t>(round * 7 + thread) % 400;
            void* block = Heap::operator new(size);
            auto& slot = slots[static_cast<std::size_t>(round + thread * 13) % slots.size()];
            Heap::operator delete(slot.exchange(block));
        }
        int blocks = 0, bytes = 0;
        Heap::getMemoryStatistics(blocks, bytes);
    });
    for (auto& slot : slots)
        Heap::operator delete(slot.exchange(nullptr));
    EXPECT_EQ(before.change(), HeapFigures{});
}

TEST(HeapThreads, FlushTheirCacheWhenTheyEnd) {
    const HeapFigures before = HeapFigures::now();
    std::thread([] {
        EXPECT_EQ(Heap::getCacheSize(), 102400);
        Heap::operator delete(Heap::operator new(100));
    }).join();
    // The block in the cache is subtracted a second time, as by every flush.
    EXPECT_EQ(before.change(), (HeapFigures{-1, -112}));
    makeUpFor(100);
}

namespace {

class Mortal : public Refcountable {};

} // namespace

TEST(WeakRefThreads, NeverReachADyingObject) {
    for (int round = 0; round < 100; ++round) {
        auto* target = new Mortal;
        WeakRef<Mortal> shared(target);
        std::atomic<int> waiting = 3;
        inThreads(3, [&](int thread) {
            --waiting;
            while (waiting > 0)
                std::this_thread::yield();
            if (thread == 0) return target->release();
            for (int turn = 0; turn < 20; ++turn) {
                const InterfacePtr<Mortal> strong = shared.lock();
                if (!strong) break;
                EXPECT_GT(strong->getRefCount(), 0);
                WeakRef<Mortal> own(strong.get());
                WeakRef<Mortal> copy = shared;
            }
        });
        EXPECT_FALSE(shared);
    }
}
