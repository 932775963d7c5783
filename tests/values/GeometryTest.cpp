#include <krcore/values/Point.h>
#include <krcore/values/Rect.h>

#include <gtest/gtest.h>

#include <limits>

using namespace KrCore;

namespace {
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
}

TEST(Point, ComparesByBothCoordinates) {
    EXPECT_EQ(Point(1, 1).cmp(Point(2, 2)), 1);
    EXPECT_EQ(Point(1, 1).cmp(Point(2, 1)), -1);
    EXPECT_EQ(Point(2, 2).cmp(Point(1, 1)), -1);
    EXPECT_EQ(Point(2, 2).cmp(Point(2, 2)), 0);
    EXPECT_EQ(Point(nan, 0).cmp(Point(nan, 0)), -1);
}

TEST(Rect, ComparesByItsOwnRules) {
    const Rect base(10, 10, 20, 20);
    const struct {
        Rect other;
        int result;
    } rows[] = {
        {{11, 11, 0, 0}, 1},       {{9, 30, 40, 40}, -1},
        {{10, 10, 30, 30}, -1},    {{10, 5, 21, 21}, 11},
        {{30, 5, 19, 21}, -1},     {{10, 9, 20, 20}, 0},
        {{10, nan, 21, 21}, 11},   {base, -1},
        {{nan, nan, nan, nan}, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.other.left << ' ' << row.other.top);
        EXPECT_EQ(base.cmp(row.other), row.result);
    }
}

TEST(Rect, CountsItsEdgesAsInside) {
    const Rect point;
    EXPECT_FALSE(point.isEmpty());
    EXPECT_TRUE(point.isInside(0, 0));
    EXPECT_TRUE(Rect(1, 0, 0, 0).isEmpty());
    const Rect rect(Point(0, 0), Point(10, 5));
    EXPECT_TRUE(rect.isInside(Point(10, 5)));
    EXPECT_FALSE(rect.isInside(10, 5.1));
    EXPECT_TRUE(rect.isInside(rect));
    EXPECT_FALSE(rect.isInside(Rect(-1, 0, 10, 5)));
}

TEST(Rect, MovesItsEdges) {
    Rect rect(0, 0, 10, 10);
    rect.grow(5, 5);
    EXPECT_EQ(rect, Rect(0, 0, 15, 15));
    rect.inset(Point(1, 2));
    EXPECT_EQ(rect, Rect(1, 2, 14, 13));
    rect.moveTo(5, 5);
    EXPECT_EQ(rect, Rect(5, 5, 18, 16));
    rect.moveBy(Point(-5, 1));
    EXPECT_EQ(rect, Rect(0, 6, 13, 17));
}

TEST(Rect, CombinesToTheEmptyOperand) {
    Rect rect;
    EXPECT_FALSE(rect.combine(Rect(0, 0, 1, 1), Rect(5, 5, 4, 4)));
    EXPECT_EQ(rect, Rect(5, 5, 4, 4));
    rect = Rect(2, 2, 4, 4);
    EXPECT_TRUE(rect.combine(Rect(0, 3, 1, 9), rect));
    EXPECT_EQ(rect, Rect(0, 2, 4, 9));
    EXPECT_TRUE(rect.intersect(rect, Rect(4, 9, 5, 10)));
    EXPECT_EQ(rect, Rect(4, 9, 4, 9));
    EXPECT_FALSE(rect.intersect(Rect(0, 0, 1, 1), rect));
}
