#pragma once

#include "support/HeapFigures.h"

#include <krcore/foundation/Allocator.h>

#include <gtest/gtest.h>

#include <cstdlib>

namespace KrCore::Testing {

/// What happens from the chosen request on.
enum class Shortage {
    Passing,    ///< This one request is refused, its repetition after the flush too; later ones
                ///< succeed.
    Lasting,    ///< It and all later ones are refused.
    UntilFlush, ///< It is refused, but its repetition after the flush succeeds.
};

/// An allocator that refuses the n-th request it gets. There is one, because installed allocators
/// stay installed; `FailingScope` makes it current for a while.
class FailingAllocator : public Allocator {
public:
    static FailingAllocator& instance() {
        static auto* allocator = new (std::malloc(sizeof(FailingAllocator))) FailingAllocator;
        return *allocator;
    }

    /// Refuses the request after `allowed` more; -1 refuses none.
    void failAfter(int allowed, Shortage shortage) {
        remaining_ = allowed;
        shortage_ = shortage;
        hasFailed_ = false;
        isRepetition_ = false;
    }
    bool hasFailed() const { return hasFailed_; }

    void* allocBlock(std::size_t byteCount) override {
        return refuses() ? nullptr : std::malloc(byteCount);
    }
    void freeBlock(void* block) override { std::free(block); }
    void* reallocBlock(void* block, std::size_t byteCount) override {
        return refuses() ? nullptr : std::realloc(block, byteCount);
    }
    void flush() override { isRepetition_ = true; }

private:
    bool refuses() {
        if (isRepetition_) {
            isRepetition_ = false;
            return shortage_ != Shortage::UntilFlush;
        }
        if (remaining_ < 0) return false;
        if (remaining_ > 0) {
            --remaining_;
            return false;
        }
        if (shortage_ != Shortage::Lasting) remaining_ = -1;
        hasFailed_ = true;
        return true;
    }

    int remaining_ = -1;
    Shortage shortage_ = Shortage::Passing;
    bool hasFailed_ = false;
    bool isRepetition_ = false;
};

/// Makes the failing allocator current; at the end the former one is back.
class FailingScope {
public:
    FailingScope(int allowed, Shortage shortage) : former_(Allocator::get()) {
        FailingAllocator::instance().failAfter(allowed, shortage);
        EXPECT_TRUE(Allocator::set(&FailingAllocator::instance()));
    }
    ~FailingScope() {
        FailingAllocator::instance().failAfter(-1, Shortage::Passing);
        Allocator::set(former_);
    }
    FailingScope(const FailingScope&) = delete;
    FailingScope& operator=(const FailingScope&) = delete;

    static bool hasFailed() { return FailingAllocator::instance().hasFailed(); }

private:
    Allocator* former_;
};

/// Runs `scenario` with the first request refused, then the second, and so on until it gets
/// through, and expects after each run that it gave everything back. The scenario may throw
/// OutOfMemory or report the shortage in its own way; either way whatever it made is to be gone
/// when it returns. State it keeps over calls (a registry, a cache) has to be filled by a call
/// before. Needs the small-block cache switched off, as TestMain does.
template <class Scenario>
void forEachFailure(Scenario scenario, Shortage shortage = Shortage::Passing) {
    constexpr int tooMany = 100000;
    for (int allowed = 0; allowed < tooMany; ++allowed) {
        SCOPED_TRACE(testing::Message() << "request " << allowed << " refused");
        const HeapFigures before = HeapFigures::now();
        bool failed = false;
        {
            FailingScope shortOfMemory(allowed, shortage);
            try {
                scenario();
            } catch (const OutOfMemory&) {
                EXPECT_NE(shortage, Shortage::UntilFlush) << "memory was there after the flush";
            }
            failed = FailingScope::hasFailed();
        }
        EXPECT_EQ(before.change(), HeapFigures{});
        if (!failed || testing::Test::HasFailure()) return;
    }
    FAIL() << "the scenario never got through";
}

} // namespace KrCore::Testing
