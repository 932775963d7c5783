// Patterns and subjects that are large in every direction: nothing may run out of stack, take more
// memory than pattern and subject account for, or leak when memory runs out.

#include "RegExpSupport.h"

#include "support/FailingAllocator.h"

#include <limits>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

String repeated(const std::string& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return fromUtf8(result);
}

TEST(HostilePatternTest, LimitsTheDepthOfGroups) {
    constexpr int deepest = 1000;
    for (const char* open : {"(", "(?:", "(?=", "(?!", "(?", "(a|"}) {
        EXPECT_FALSE(RegExp(repeated(open, 100000), 0).good());
        EXPECT_FALSE(RegExp(repeated(open, 100000) + repeated(")", 100000), 0).good());
        EXPECT_TRUE(RegExp(repeated(open, deepest) + repeated(")", deepest), 0).good());
        EXPECT_FALSE(RegExp(repeated(open, deepest + 1) + repeated(")", deepest + 1), 0).good());
    }
    const String nested = repeated("(?:", deepest) + "a" + repeated("|b)*", deepest);
    EXPECT_EQ(found(nested, "aaaab"), "0-5");
    const String captured =
        repeated("((?=", deepest / 2) + "a" + repeated(")a|b){1,2}", deepest / 2);
    EXPECT_EQ(found(captured, "aba").substr(0, 3), "0-1");
}

TEST(HostilePatternTest, LimitsTheDepthTimesTheGroups) {
    const String opened = repeated("(?:", 998), closed = repeated(")", 998);
    EXPECT_TRUE(RegExp(opened + repeated("()", 16000) + closed, 0).good());
    EXPECT_FALSE(RegExp(opened + repeated("()", 17000) + closed, 0).good());
    EXPECT_TRUE(RegExp(repeated("()", 17000), 0).good());
}

TEST(HostilePatternTest, LimitsTheDepthOfQuantifiers) {
    for (const char* quantifier : {"{1}", "{0,2}", "{1}?"}) {
        EXPECT_EQ(found("a" + repeated(quantifier, 1000), "aa").substr(0, 2), "0-") << quantifier;
        EXPECT_FALSE(RegExp("a" + repeated(quantifier, 200000), 0).good()) << quantifier;
    }
    const String inGroups = repeated("(", 900) + "a" + repeated("{1}{1}{1}{1}{1})", 900);
    EXPECT_FALSE(RegExp(inGroups, 0).good());
    EXPECT_FALSE(RegExp("a" + repeated("{1}", 2500) + repeated("|(b", 800), 0).good());
}

TEST(HostilePatternTest, CompilesPatternsOfManyWays) {
    // 10^14 ways lead to the "x"; and every run leads over the same groups.
    std::string group = "(?:^";
    for (int i = 1; i < 100; ++i)
        group += "|^";
    EXPECT_TRUE(RegExp(repeated(group + ")", 7) + "x", 0).good());
    EXPECT_TRUE(RegExp("(?:a*" + repeated("|a*", 250000) + ")" + repeated("()", 100000), 0).good());
}

TEST(HostilePatternTest, SearchesBehindARunAtTheEnd) {
    EXPECT_EQ(found("a+b", repeated("a", 1000)), "none");
    EXPECT_EQ(found("a*b", repeated("a", 1000000)), "none");
}

TEST(HostilePatternTest, CompilesLongPatterns) {
    constexpr int length = 1000000;
    const String literal = repeated("ab", length / 2);
    EXPECT_EQ(found(literal, "b" + literal), "1-1000001");
    EXPECT_EQ(found(repeated(".", length), literal), "0-1000000");
    EXPECT_EQ(found(repeated("a?", length / 10), "aa"), "0-2");
    EXPECT_EQ(found(repeated("(?:)", length / 4), "aa"), "0-0");
    EXPECT_EQ(found(repeated("a|", length / 2), "b"), "0-0");
    EXPECT_EQ(found("[" + repeated("\\W", length / 2) + "]", "a-"), "1-2");
    // Each ")" makes alternatives of all that is in front of it.
    EXPECT_EQ(found(repeated("|b)", length / 3), "b)b)"), "error");
    EXPECT_EQ(found("a" + repeated("{1", length / 2), "a"), "none");
}

TEST(HostilePatternTest, KeepsSetsAsSmallAsTheirText) {
    for (const char* set : {"[^\\u0000-\\uffff]", "[\\s\\u0100-\\u0200]", "\\s", "[^]"}) {
        const HeapFigures before = HeapFigures::now();
        const String pattern = repeated(set, 20000);
        const RegExp expression(pattern, RegExp::IgnoreCase);
        EXPECT_TRUE(expression.good());
        EXPECT_LT(before.change().bytes, 20000 * 512) << set;
    }
}

TEST(HostilePatternTest, CountsToTheLargestNumber) {
    expectFound({{u"(?:a{2147483647}){2147483647}", u"aa", "none"},
                 {u"(?:a{0,2147483647}){0,2147483647}b", u"aab", "0-3"},
                 {u"(?:a|b){2147483647,2147483647}", u"ab", "none"},
                 {u"(?:){2147483647}", u"", "none"},
                 {u"(?:){2147483647}?", u"ab", "0-0"},
                 {u"(?:a{2147483647}?|b)*", u"ab", "0-0"}});
}

TEST(HostilePatternTest, SearchesLongSubjects) {
    constexpr int length = 10000000;
    String subject;
    subject.init(length);
    std::fill_n(subject.writable(), length, 'a');
    const struct {
        const char* pattern;
        const char* expected;
    } rows[] = {{"b", "none"},
                {"a*", "0-10000000"},
                {"(a|b)*$", "0-10000000 9999999-10000000"},
                {"(?:(?=(a)).)+", "0-10000000 9999999-10000000"},
                {".*?$", "0-10000000"},
                {"(?!a)|\\Bb", "10000000-10000000"}};
    for (const auto& row : rows)
        EXPECT_EQ(found(row.pattern, subject), row.expected) << row.pattern;
}

TEST(HostilePatternTest, TriesManyGroupsAndAlternations) {
    constexpr int count = 10000;
    const Expression expression(repeated("(?:(a)|b)", count));
    ASSERT_EQ(expression.getCaptureLength(), count + 1);
    const HeapFigures before = HeapFigures::now();
    EXPECT_TRUE(expression.match(repeated("a", count)));
    EXPECT_EQ(expression.slots[count].start, count - 1);
    EXPECT_TRUE(expression.match(repeated("b", count)));
    EXPECT_EQ(expression.slots[count].start, -1);
    EXPECT_FALSE(expression.match(repeated("b", count - 1), count - 3));
    EXPECT_EQ(before.change(), HeapFigures{});
}

TEST(HostilePatternTest, AsksForNoMemoryToMatchASmallPattern) {
    const Expression steps("(\\w+)=(\\d*?);");
    const Expression tree("(?=(\\w))(?:\\w+=|\\d{2,}?;)+(?!b)");
    const String subject = "key=12;b ";
    FailingScope shortOfMemory(0, Shortage::Lasting);
    EXPECT_TRUE(steps.match(subject));
    EXPECT_TRUE(tree.match(subject));
    EXPECT_FALSE(FailingScope::hasFailed());
}

TEST(HostilePatternTest, GivesBackEverythingWhenMemoryRunsOut) {
    const String subject = "x-abcabc 12:34";
    for (const char* text : {"(?:(a)|(b)|(?=(c))c)*[\\W\\u0100-\\u0200](\\d+?){1,2}:((3)(4)|5)",
                             "(\\w+)-(a|b(?:c|d)|e|f|g|h)bc.*(\\d{2}):(\\d+)$",
                             "((((a|b)|[c-d])*(e|f|[^\\x00])", "(a)(b)[z-a]"}) {
        SCOPED_TRACE(text);
        const String pattern = repeated(text, 1) + repeated("a?(b|c)?", 40);
        forEachFailure([&] {
            const Expression expression(pattern, RegExp::IgnoreCase);
            expression.match(subject);
        });
    }
}

} // namespace
