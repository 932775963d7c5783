// What compiles, and into what: shown by what it matches.

#include "RegExpSupport.h"

#include "support/TextSupport.h"

#include <limits>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(PatternTest, CompilesOrNot) {
    for (const char* pattern :
         {"",   "a*?",     "a{2}?", "a{2}{3}", "a*?{2}", "{x",           "{",  "a{1,2",
          "^*", "$+",      "\\b?",  "(?=a)*",  "(a))",   "(|)",          "[]", "[^]",
          "]",  "[\\d-z]", "\\cA",  "\\1(a)",  "\\12",   "\\99999999999"})
        EXPECT_TRUE(RegExp(pattern, 0).good()) << pattern;
    for (const char* pattern :
         {"a**", "a+?+", "a???",  "a{2}*", "*a",  "(*a)", "a|*",    "{2}",     "(a",
          "(?",  "(?:",  "(?*)",  "[a",    "[",   "[a-",  "[z-a]",  "[a-\\b]", "[\\B]",
          "\\c", "\\c1", "[\\c]", "\\",    "a\\", "[\\",  "(a)\\2", "\\1",     "(?:a)\\1"})
        EXPECT_FALSE(RegExp(pattern, 0).good()) << pattern;
}

TEST(PatternTest, CountsGroupsThatCapture) {
    const struct {
        const char* pattern;
        int length;
    } rows[] = {{"a", 1}, {"(a)(?:b)((c))", 4}, {"(?=(a))(?!(b)|(c))", 4}, {"(?x)", 1}, {"(", 0}};
    for (const auto& row : rows)
        EXPECT_EQ(RegExp(row.pattern, 0).getCaptureLength(), row.length) << row.pattern;
}

TEST(PatternTest, KeepsPatternAndFlagsAsGiven) {
    const int all = std::numeric_limits<int>::min() | 7;
    for (const char* pattern : {"a\\/b", "("}) {
        const RegExp original(pattern, all);
        RegExp copy("b", 0);
        copy = original;
        copy = *&copy;
        EXPECT_EQ(RegExp(copy).getPattern(), pattern);
        EXPECT_EQ(copy.getFlags(), all);
        EXPECT_EQ(copy.good(), original.good());
    }
}

TEST(PatternTest, MatchesNothingWithoutCompiling) {
    const Expression expression("(a");
    ASSERT_NE(expression.slots, nullptr);
    EXPECT_FALSE(expression.match("a"));
    EXPECT_EQ(expression.slots[0].start, -1);
}

TEST(PatternTest, MatchesTheEmptyTextByDefault) {
    const RegExp expression;
    EXPECT_TRUE(expression.good());
    EXPECT_EQ(expression.getPattern(), "(?:)");
    EXPECT_EQ(expression.getFlags(), 0);
    EXPECT_EQ(expression.getCaptureLength(), 0);
    const std::unique_ptr<Capture[]> slots(expression.createCaptureList());
    EXPECT_TRUE(expression.match("abc", 2, slots[0]));
    EXPECT_FALSE(expression.match("abc", 3, slots[0]));
}

TEST(PatternTest, ReadsEscapes) {
    expectFound({{u"\\t\\n\\v\\f\\r", u"\t\n\v\f\r", "0-5"},
                 {u"\\cA\\cz", u"\x01\x1a", "0-2"},
                 {u"\\x41\\u0062\\o103\\u00e9\\xE9", u"AbC\u00e9\u00e9", "0-5"},
                 {u"\\xZZ\\x4\\u004\\o18\\o7", u"xZZx4u004o18o7", "0-14"},
                 {u"\\012\\12\\08", u"\n\n", "none"},
                 {u"\\012\\12", u"\n\n", "0-2"},
                 {u"(a)\\12", u"a\n", "0-2 0-1"},
                 {u"\\18\\400\\777\\1234",
                  u"\x01"
                  u"8\u0100\u01FFS4",
                  "0-6"},
                 {u"\\88\\9999999999", u"889999999999", "0-12"},
                 {u"\\*\\(\\]\\-\\/\\a\\y\\_\\}\\\\", u"*(]-/ay_}\\", "0-10"},
                 {u"a\\x2a\\x28", u"a*(", "0-3"}, // never special
                 {u"\\(a\\|b", u"(a|b", "0-4"}});
    EXPECT_EQ(found("a\\08", text(u"a\0008")), "0-3");
    EXPECT_EQ(found("[\\0]\\0", text(u"a\0\0")), "1-3");
}

TEST(PatternTest, ReadsSets) {
    expectFound(
        {{u"[a-c]+", u"abcd", "0-3"},
         {u"[a-]+", u"a-b", "0-2"},
         {u"[-a]+", u"a-b", "0-2"},
         {u"[]", u"a]", "none"},
         {u"[]]", u"]", "none"},
         {u"[^]+", u"a\n]", "0-3"},
         {u"[^]]", u"a]", "0-2"},
         {u"[^]", u"", "none"}, // nor does a negated one match the end
         {u"[^a]", u"a", "none"},
         {u"[^a^]", u"^b", "1-2"},
         {u"[!-*]+", u"!%*+", "0-3"},
         {u"[[({|.$]+", u"[({|.$", "0-6"},
         {u"[\\]]", u"]", "0-1"},
         {u"[\\b\\8\\1]+", u"\b8\x01", "0-3"},
         {u"[\\12-\\x0c]+", u"\n\v\f\r", "0-3"},
         {u"[\\d-z]+", u"5-zy", "0-3"},
         {u"[a-\\d]+", u"a-5c", "0-3"},
         {u"[\\b-z]+", u"\b-za", "0-3"},
         {u"[\x08-\\b]", u"\b", "0-1"},
         {u"[+\\x2d/]+", u"+-/,", "0-3"}, // only a plain "-" makes a range
         {u"[+-\\x2d]+", u"+,-.", "0-3"},
         {u"[\\Wa]+", u"a-\u00E9_", "0-3"},
         {u"[^\\D]", u"a5", "1-2"},
         {u"[\\D5]+", u"5a4", "0-2"},
         {u"[\\u00f0-\\u0110\\u3000-\\uffff]+", u"\u00f0\u0100\u0110\u4e00\uffff\u00ef", "0-5"},
         {u"[^\\u0100-\\uffff]", u"\u0100\u00ff", "1-2"}});
}

TEST(PatternTest, TakesABackspaceForWhiteSpace) {
    const std::u16string spaces = u"\b\t\n\v\f\r \u00A0\u1680\u180E\u2000\u2005\u200A\u2028\u2029"
                                  u"\u202F\u205F\u3000";
    for (const char16_t space : spaces) {
        const String unit(&space, 1);
        EXPECT_EQ(found("\\s", unit), "0-1") << int(space);
        EXPECT_EQ(found("[\\S]", unit), "none") << int(space);
    }
    expectFound({{u"\\s", u"\a\x0e\x1f!\u1681\u200B\u202A\uFEFF", "none"}});
}

TEST(PatternTest, BindsAQuantifierToTheLastUnitOfARun) {
    expectFound({{u"abc+", u"abccabc", "0-4"},
                 {u"ab{2}", u"ababb", "2-5"},
                 {u"a\\x62?c", u"ac", "0-2"},
                 {u"ab|cd*", u"cdd", "0-3"}});
}

TEST(PatternTest, RepeatsRunsOfDotsAsAWhole) {
    expectFound({{u"..*", u"abc", "0-2"},
                 {u"...+", u"abcdefg", "0-6"},
                 {u".{2}", u"abc", "0-2"},
                 {u".\\..*", u"a.bc", "0-4"}});
}

TEST(PatternTest, ReadsCounts) {
    expectFound({{u"a{2}", u"aaa", "0-2"},
                 {u"a{2,}", u"aaa", "0-3"},
                 {u"a{1,2}", u"aaa", "0-2"},
                 {u"a{3,1}", u"aaaa", "0-3"},
                 {u"a{0}", u"aa", "0-0"},
                 {u"a{2}{2}", u"aaaaa", "0-4"},
                 {u"(a){2}", u"aab", "0-2 1-2"},
                 {u"a{2147483647}", u"aa", "none"},
                 {u"a{99999999999,}", u"aa", "none"},
                 {u"a{0,99999999999}", u"aa", "0-2"}});
}

TEST(PatternTest, TakesIncompleteCountsLiterally) {
    expectFound({{u"a{,3}", u"a{,3}", "0-5"},
                 {u"a{x}", u"a{x}", "0-4"},
                 {u"a{2", u"a{2", "0-3"},
                 {u"a{1,2", u"a{1,2", "0-5"},
                 {u"a{1,x}", u"a{1,x}", "0-6"},
                 {u"a{", u"a{", "0-2"},
                 // What breaks a count off is read again as what it is ...
                 {u"a{x*", u"a{xxx", "0-5"},
                 {u"a{1(b)", u"a{1b", "0-4 3-4"},
                 // ... and a quantifier there repeats all that was read of the count.
                 {u"a{1*", u"a{1{1{", "0-5"}});
}

TEST(PatternTest, TakesUnknownGroupMarksLiterally) {
    expectFound({{u"(?x)", u"?x", "0-2"},
                 {u"(?x)", u"x", "0-1"},
                 {u"(?<n>a)", u"<n>a", "0-4"},
                 {u"(??a)", u"?a", "0-2"},
                 {u"(?|a)", u"a", "0-0"},
                 // It stores in the slot of the group before.
                 {u"(a)(?x)\\1", u"axx", "0-3 1-2"},
                 {u"(a(?x)b)", u"axb", "0-3 0-3"},
                 {u"(a*)\\1(?x)", u"aaaab", "none"}});
}

TEST(PatternTest, TakesUnmatchedClosersLiterally) {
    expectFound({{u"a)b]c", u"a)b]c", "0-5"},
                 {u")+]*", u"))]]", "0-4"},
                 {u"a)]b*", u"a)]bb", "0-5"},
                 {u"(a))", u"a)", "0-2 0-1"},
                 // Alternatives end before it.
                 {u"a|b)c", u"ac|b)c", "3-6"},
                 {u"a|b)|c", u"b)", "0-2"},
                 {u"a|b)|c", u"c", "0-1"}});
}

TEST(PatternTest, TakesEmptyAlternatives) {
    expectFound({{u"a|", u"b", "0-0"},
                 {u"|a", u"a", "0-0"},
                 {u"(|a)b", u"ab", "0-2 0-1"},
                 {u"(a||b)c", u"bc", "0-2 0-1"},
                 {u"()", u"a", "0-0 0-0"}});
}

} // namespace
