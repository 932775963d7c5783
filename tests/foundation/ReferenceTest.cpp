#include "support/FailingAllocator.h"

#include <krcore/foundation/Refcountable.h>
#include <krcore/foundation/WeakRef.h>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <vector>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

/// Tells when it goes, and what it sees then.
class Target : public Refcountable {
public:
    explicit Target(int* deaths = nullptr) : deaths_(deaths) {}
    ~Target() override {
        if (deaths_) ++*deaths_;
        if (watcher) isSeenDying = watcher->get() != nullptr;
        addRef();
        release();
        if (watcher) *watcher = this;
    }

    WeakRef<Target>* watcher = nullptr;
    static inline bool isSeenDying = false;

private:
    int* deaths_;
};

} // namespace

TEST(Refcountable, DiesWithItsLastReference) {
    int deaths = 0;
    auto* target = new Target(&deaths);
    EXPECT_EQ(target->getRefCount(), 1);
    target->addRef();
    EXPECT_EQ(target->getRefCount(), 2);
    target->release();
    EXPECT_EQ(deaths, 0);
    target->release();
    EXPECT_EQ(deaths, 1) << "the destructor itself takes and drops a reference";
}

TEST(InterfacePtr, HoldsOneReference) {
    int deaths = 0;
    auto first = InterfacePtr<Target>::adopt(new Target(&deaths));
    {
        InterfacePtr<Target> second = first;
        InterfacePtr<Refcountable> base = second;
        EXPECT_EQ(first->getRefCount(), 3);
        InterfacePtr<Target> moved = std::move(second);
        EXPECT_FALSE(second); // NOLINT(bugprone-use-after-move): empty, as documented
        EXPECT_EQ(first->getRefCount(), 3);
        moved = first;
        EXPECT_TRUE(moved == first && base == moved);
    }
    EXPECT_EQ(first->getRefCount(), 1);
    Target* plain = first.detach();
    EXPECT_FALSE(first);
    plain->release();
    EXPECT_EQ(deaths, 1);
}

TEST(WeakRef, ReadsNullBeforeTheDestructorRuns) {
    auto* target = new Target;
    WeakRef<Target> reference(target);
    EXPECT_EQ(target->getRefCount(), 1);
    EXPECT_EQ(reference.get(), target);
    target->watcher = &reference;
    Target::isSeenDying = true;
    target->release();
    EXPECT_FALSE(Target::isSeenDying);
    EXPECT_FALSE(reference) << "a dying object can no longer be referred to";
    EXPECT_FALSE(reference.lock());
}

TEST(WeakRef, FollowsItsAssignments) {
    auto* first = new Target;
    auto* second = new Target;
    WeakRef<Target> reference(first);
    WeakRef<Target> copy = reference;
    reference = second;
    reference = second;
    copy = *&copy;
    first->release();
    EXPECT_FALSE(copy);
    EXPECT_EQ(reference.get(), second);
    copy = reference;
    EXPECT_EQ(copy.lock()->getRefCount(), 2);
    reference = nullptr;
    WeakRefBase::release(second);
    EXPECT_FALSE(copy);
    second->release();
}

TEST(WeakRef, ServesManyHoldersThatComeAndGo) {
    auto* target = new Target;
    std::vector<std::unique_ptr<WeakRef<Target>>> holders(500);
    for (int round = 0; round < 4; ++round) {
        for (std::size_t index = 0; index < holders.size();
             index += static_cast<std::size_t>(round) + 1)
            holders[index] = holders[index] ? nullptr : std::make_unique<WeakRef<Target>>(target);
    }
    target->release();
    for (const auto& holder : holders)
        EXPECT_TRUE(!holder || !holder->get());
}

TEST(WeakRef, StaysEmptyWithoutMemory) {
    {
        // The table itself stays for good.
        auto warmUp = InterfacePtr<Target>::adopt(new Target);
        WeakRef<Target> reference(warmUp.get());
    }
    forEachFailure([] {
        auto first = InterfacePtr<Target>::adopt(new Target);
        auto second = InterfacePtr<Target>::adopt(new Target);
        WeakRef<Target> reference(first.get());
        try {
            reference = second.get();
        } catch (const OutOfMemory&) {
            EXPECT_FALSE(reference);
            throw;
        }
        std::array<WeakRef<Target>, 40> others;
        for (auto& other : others)
            other = reference;
    });
}
