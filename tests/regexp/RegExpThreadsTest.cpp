#include "RegExpSupport.h"

#include "support/Threads.h"

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(RegExpThreads, MatchWithOneExpression) {
    const RegExp steps("(\\w+)=(\\d*?);", RegExp::IgnoreCase);
    const RegExp tree("(?=(k))(\\w+)=(\\d*)", 0);
    const String subject = "-key=12;";
    inThreads(4, [&](int index) {
        const std::unique_ptr<Capture[]> slots(tree.createCaptureList());
        for (int round = 0; round < 200; ++round) {
            const RegExp copy = index % 2 ? tree : steps;
            ASSERT_TRUE(steps.match(subject, 0, slots[0]));
            EXPECT_EQ(slots[1].start, 1);
            EXPECT_EQ(slots[2].end, 7);
            EXPECT_FALSE(tree.match(subject, 6, slots[0]));
            ASSERT_TRUE(copy.match(subject, 0, slots[0]));
            EXPECT_EQ(slots[0].start, 1);
            EXPECT_EQ(copy.getCaptureLength(), index % 2 ? 4 : 3);
        }
    });
}

} // namespace
