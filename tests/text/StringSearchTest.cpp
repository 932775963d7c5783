#include "support/TextSupport.h"

#include <climits>
#include <random>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(StringFind, FollowsItsRulesAtTheEdges) {
    const struct {
        const char* text;
        const char* what;
        int start;
        bool reverse;
        int position;
    } rows[] = {{"abcdef", "", 3, false, 3},
                {"abcdef", "", 6, false, 6},
                {"abcdef", "", 7, false, -1},
                {"abcdef", "cd", -5, false, 2},
                {"abcdef", "cd", 3, false, -1},
                {"abcdef", "abcdefg", 0, false, -1},
                {"abcdef", "f", INT_MAX, false, -1},
                {"abcdef", "a", INT_MIN, false, 0},
                {"", "", 0, false, 0},
                {"aXa", "a", -1, true, 2},
                {"aXa", "a", 1, true, 0},
                {"aXa", "a", 2, true, 2},
                {"abcabc", "abc", 2, true, 0},
                {"abcabc", "abc", 99, true, 3},
                {"abcabc", "bc", 0, true, -1},
                {"abc", "", -1, true, 3},
                {"abc", "", 1, true, 1},
                {"abc", "", INT_MAX, true, 3},
                {"abc", "abcd", -1, true, -1},
                {"abc", "c", INT_MIN, true, 2}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.text << " " << row.what << " " << row.start);
        const String text(row.text);
        EXPECT_EQ(text.find(row.what, row.start, row.reverse), row.position);
        EXPECT_EQ(text.find(String(row.what), row.start, row.reverse), row.position);
        EXPECT_EQ(text.find(String(row.what).wstr(), row.start, row.reverse), row.position);
    }
    const String zeros = text(u"a\0b\0");
    EXPECT_EQ(zeros.find(u'\0'), 1);
    EXPECT_EQ(zeros.find(u'\0', -1, true), 3);
}

int findSlowly(const String& text, const String& what, bool reverse) {
    int found = -1;
    for (int i = 0; i <= text.length() - what.length(); ++i) {
        if (text.substr(i, what.length()) == what && (reverse || found < 0)) found = i;
    }
    return found;
}

TEST(StringFind, AgreesWithASlowSearchOnRepetitiveText) {
    std::mt19937 random(1);
    for (int round = 0; round < 3000; ++round) {
        const int letters = 1 + static_cast<int>(random() % 3);
        const auto make = [&](std::uint64_t length) {
            String made;
            while (made.length() < static_cast<int>(length)) {
                made.append(static_cast<char>('a' + random() % letters));
            }
            return made;
        };
        String text = make(random() % 90);
        const String what = make(1 + random() % 12);
        if (round % 4 == 0) text.insert(what, static_cast<int>(random() % 60));
        EXPECT_EQ(text.find(what), findSlowly(text, what, false)) << text << " " << what;
        EXPECT_EQ(text.find(what, -1, true), findSlowly(text, what, true)) << text << " " << what;
    }
}

/// Quadratic search of these would take minutes.
TEST(StringFind, IsLinearWhateverTheTextIs) {
    constexpr int half = 1 << 19;
    String text, inner, end, periodic;
    text.setup('a', 2 * half);
    inner.setup('a', half);
    end = inner;
    inner.set(half / 2, 'b');
    end.set(0, 'b');
    EXPECT_EQ(text.find(inner), -1);
    EXPECT_EQ(text.find(inner, -1, true), -1);
    EXPECT_EQ(text.find(end, -1, true), -1);
    text.append(inner);
    text.append(text);
    EXPECT_EQ(text.find(inner), 2 * half);
    EXPECT_EQ(text.find(inner, -1, true), 5 * half);
    EXPECT_EQ(text.replaceAll(inner, "b"), 2);
}

TEST(StringFindAny, LooksForSmallAndLargeSets) {
    const String text(u"one, two; three\u20AC\u00FF!");
    const struct {
        const char* set;
        int start;
        int position;
    } rows[] = {
        {",;", 0, 3},          {",;", 4, 8},          {",;", 9, -1},          {"", 0, -1},
        {"qzxjkvy,;!?", 0, 3}, {"qzxjkvy;!?", -7, 8}, {"qzxjkvyABC?", 0, -1}, {"o", INT_MAX, -1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.set);
        EXPECT_EQ(text.findAny(row.set, row.start), row.position);
        EXPECT_EQ(text.findAny(String(row.set), row.start), row.position);
    }
    EXPECT_EQ(text.findAny(u"\u20AC"), 15);
    EXPECT_EQ(text.findAny(u"0123456789\u20AC"), 15);
}

} // namespace
