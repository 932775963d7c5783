#include "RegExpSupport.h"

#include <limits>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

constexpr int ignoreCase = RegExp::IgnoreCase;
constexpr int multiLine = RegExp::MultiLine;

TEST(MatchTest, SearchesFromTheStartItIsGiven) {
    expectFound({{u"a", u"aba", "0-1"},
                 {u"a", u"aba", "2-3", 0, 1},
                 {u"a", u"aba", "2-3", 0, 2},
                 {u"a", u"aba", "none", 0, 3},
                 {u"a", u"aba", "none", 0, -1},
                 {u"", u"abc", "none", 0, 3},
                 {u"", u"abc", "none", 0, std::numeric_limits<int>::max()},
                 {u"", u"", "0-0"},
                 {u"", u"", "none", 0, 1},
                 {u"x*", u"abc", "2-2", 0, 2},
                 {u"$", u"abc", "3-3"},
                 {u"^a", u"aa", "none", 0, 1},
                 {u"\\bb", u"ab", "none", 0, 1}});
}

TEST(MatchTest, StoresCaptures) {
    expectFound({{u"(a)|b", u"b", "0-1 -"},
                 {u"((a)(b))c", u"abc", "0-3 0-2 0-1 1-2"},
                 {u"(a*)(a*)", u"aa", "0-2 0-2 2-2"},
                 {u"(a*?)(a*)", u"aa", "0-2 0-0 0-2"},
                 {u"(a)(?:b|bc)d", u"abcd", "0-4 0-1"}, // the plain group has no slot
                 {u"(?:(a)|(b))+", u"ab", "0-2 0-1 1-2"},
                 {u"(a|ab)(c|bcd)", u"abcd", "0-4 0-1 1-4"}});
}

TEST(MatchTest, FindsBothKindsOfBoundaryAtTheEnd) {
    expectFound({{u"a\\b", u"a", "0-1"},
                 {u"a\\B", u"a", "0-1"},
                 {u"-\\b", u"-", "0-1"},
                 {u"\\b", u"", "0-0"},
                 {u"\\B", u"", "0-0"},
                 {u"\\b", u" a", "1-1"},
                 {u"\\B", u"ab", "1-1"},
                 {u"\\b\u00E9", u"a\u00E9", "1-2", ignoreCase},
                 {u"\\b_", u"-_", "1-2"}});
}

TEST(MatchTest, LetsADotMatchAllButLineFeeds) {
    expectFound({{u"a.c", u"a\nc", "none"},
                 {u"a.c", u"a\nc", "none", multiLine},
                 {u"a...c", u"a\r\u2028\u2029c", "0-5"},
                 {u".*", u"ab\nc", "0-2"},
                 {u"..", u"\U0001F600", "0-2"}}); // two units
}

TEST(MatchTest, FindsLinesWithMultiLineOnly) {
    expectFound({{u"^b", u"a\u2028b", "2-3", multiLine},
                 {u"^b", u"a\u2028b", "none"},
                 {u"^b$", u"b\u0085\nb\r", "3-4", multiLine},
                 {u"a$", u"a\u2029a", "0-1", multiLine},
                 {u"a$", u"a\u2029a", "2-3"},
                 {u"^$", u"\n", "0-0", multiLine},
                 {u"^$", u"\n", "none"}});
}

TEST(MatchTest, IgnoresCaseByTheUpperCase) {
    expectFound({{u"\u00C9b", u"\u00E9B", "0-2", ignoreCase},
                 {u"\u00C9", u"\u00E9", "none"},
                 {u"[a-z]+", u"aBC", "0-3", ignoreCase},
                 {u"[^a]", u"A", "none", ignoreCase},
                 {u"(ab)\\1", u"abAB", "0-4 0-2", ignoreCase},
                 {u"\u01C5", u"\u01C6", "0-1", ignoreCase},
                 {u"b{x", u"B{X", "0-3", ignoreCase},
                 // A set looks for the upper and the lower case of a unit, but not for itself.
                 {u"[\\u01C5]", u"\u01C5", "none", ignoreCase},
                 {u"[^\\u01C5]", u"\u01C5", "0-1", ignoreCase},
                 {u"\\w", u"\u017F", "0-1", ignoreCase},
                 {u"\\W", u"\u017F", "none", ignoreCase}});
}

TEST(MatchTest, FindsAMatchAtAnyDistance) {
    const struct {
        const char16_t* pattern;
        const char16_t* text;
        int flags;
    } rows[] = {{u"kb\u00e9", u"KB\u00C9", ignoreCase},
                {u"kb\u00e9", u"kb\u00E9", 0},
                {u"\u0131s@", u"i\u017F@", ignoreCase},
                {u"[x-z]\\d", u"y1", 0},
                {u"(?:x|\u0120)1", u"\u01201", 0},
                {u"^kb", u"kb", multiLine},
                {u"\\d+?:", u"12:", 0},
                {u"x*y", u"xxy", 0}};
    for (const auto& row : rows) {
        for (int distance = 0; distance < 40; ++distance) {
            String subject;
            for (int i = 1; i < distance; ++i)
                subject += i % 3 ? "b" : "k";
            if (distance > 0) subject += "\n";
            const int end = distance + String(row.text).length();
            EXPECT_EQ(found(row.pattern, subject + row.text + "kb", row.flags),
                      std::to_string(distance) + "-" + std::to_string(end))
                << String(row.pattern);
        }
    }
}

TEST(MatchTest, RefersToCaptures) {
    expectFound({{u"(a*)b\\1", u"aabaa", "0-5 0-2"},
                 {u"(a*)b\\1", u"aaba", "1-4 1-2"},
                 {u"\\1(a)", u"a", "0-1 0-1"}, // unset: the empty text
                 {u"(a\\1)", u"aa", "0-1 0-1"},
                 {u"(?:(a)|b)\\1c", u"bc", "0-2 -"},
                 // What an attempt further to the front has stored is still there.
                 {u"\\1(a)b", u"aab", "none"}});
}

TEST(MatchTest, NeverTriesALookAheadAgain) {
    expectFound({{u"(?=(a))a", u"a", "0-1 0-1"},
                 {u"(?!(a))b", u"b", "0-1 -"},
                 {u"a(?!b)", u"abac", "2-3"},
                 {u"(?=(a+))a*b\\1", u"baaabac", "3-6 3-4"},
                 {u"(?=(a|ab))\\1c", u"abc", "none"},
                 // Inside, an alternative with choices ends the scan for good.
                 {u"(?=a*c|b)b", u"b", "none"},
                 {u"(?=ac|b)b", u"b", "0-1"}});
}

TEST(MatchTest, LetsEveryRepetitionStartFromTheFirstAlternative) {
    expectFound({{u"(?:a|b)+", u"aba", "0-3"},
                 {u"(?:a|b)*c", u"b", "none"},
                 {u"(?:(?:a|b)+,)+", u"ba,ab,", "0-6"},
                 // One that has choices ends the scan there as well.
                 {u"(?:(?:a|b)|c)+", u"abc", "0-2"}});
}

/// At 0 the first "a" would have to be one way and the second another.
TEST(MatchTest, LetsRepetitionsShareTheirChoices) {
    expectFound({{u"(?:a|ab)*c", u"aabc", "1-4"},
                 {u"(?:a|ab)*c", u"ababc", "2-5"},
                 {u"(?:a|ab)+?c", u"abc", "0-3"}});
}

/// Of a group the last node is asked for another choice first, whether its turn had come or not;
/// an alternation with nothing left then counts as matched.
TEST(MatchTest, PassesAnAlternationThatHasNothingLeft) {
    expectFound({{u"(?:(?:c|a)d*b)", u"b", "0-1"},
                 {u"((?:c|a)d*b)(?=)", u"b", "0-1 0-1"},
                 {u"(?:c|a)d*b", u"b", "none"}});
}

TEST(MatchTest, UnsetsAllLaterGroupsWithARepetition) {
    expectFound({{u"(?:(a)?(?:(b)c|c))+", u"bcac", "0-4 2-3 -"},
                 {u"(?:(a){0}c|(b))+", u"bc", "0-2 - -"}, // even without a repetition
                 {u"(a)(?:(b)|c)*", u"abc", "0-3 0-1 1-2"}});
}

TEST(MatchTest, LeavesTheCapturesOfAbandonedAlternatives) {
    expectFound({{u"(a)x|(a)y", u"ay", "0-2 0-1 0-1"},
                 {u"(?!(a))b|a", u"a", "0-1 0-1"},
                 {u"(a)x|(b)y", u"ab", "none"},
                 {u"(?:(a)x|b)c|a\\1", u"aa", "0-1 -"}}); // a whole alternation that failed
}

TEST(MatchTest, PutsCapturesBackAfterABrokenRepetition) {
    expectFound({{u"(?:(a)(b))*", u"aba", "0-2 0-1 1-2"},
                 {u"(?:(a)(b))*", u"a", "0-0 0-1 -"}}); // to the last whole one, if any
}

TEST(MatchTest, RepeatsNothingAtTheEnd) {
    expectFound({{u"()+", u"", "none"},
                 {u"(?:)+", u"", "none"},
                 {u"(?:)+", u"a", "0-0"},
                 {u"(?:)*", u"", "0-0"},
                 {u"$+", u"a", "none"},
                 {u"$+", u"a\n", "1-1", multiLine},
                 {u"a(?:b*){1}", u"a", "none"}});
}

TEST(MatchTest, TakesAnEmptyRepetitionForAllThatAreNeeded) {
    expectFound({{u"(a*)*", u"b", "0-0 0-0"},
                 {u"(a*){3}", u"b", "0-0 0-0"},
                 {u"(?:){2147483647}", u"a", "0-0"},
                 {u"(?:a?\?)+b", u"ab", "1-2"}});
}

TEST(MatchTest, EndsLazyRepetitionsOfNothing) {
    expectFound({{u"(?:)*?b", u"ac", "none"},
                 {u"(?:){0,5}?b", u"ab", "1-2"},
                 {u"(?:a?\?)+?b", u"ac", "none"},
                 {u"x|(?:b|\\B)+?y+", u"abAc", "none"}});
}

TEST(MatchTest, GivesAFixedCountNoSecondChance) {
    expectFound({{u"(?:a|ab){2}c", u"abac", "none"},
                 {u"(?:a*){1}a", u"aa", "none"},
                 {u"(a|ab){1}c", u"abc", "none"},
                 // Its choices are put back for the next start all the same.
                 {u"(?:a+?){2}", u"baaa", "1-3"}});
}

TEST(MatchTest, RepeatsAsSeldomAsPossible) {
    expectFound({{u"a*?b", u"aab", "0-3"},
                 {u"a+?", u"aa", "0-1"},
                 {u"a{1,2}?b", u"aaab", "1-4"},
                 {u"(a?\?)(b)", u"ab", "0-2 0-1 1-2"},
                 {u"<.*?>", u"<a><b>", "0-3"}});
}

} // namespace
