// Appending, inserting, cutting, splitting and replacing.

#include "support/TextSupport.h"

#include <climits>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(StringAppend, TakesEveryFormOfText) {
    String s;
    s.append('a');
    s.append('\xE9');
    s.append(u'\u20AC');
    s.append("xyz", 2);
    s.append("", 0);
    s.append(static_cast<const char*>(nullptr));
    s += "!";
    s += String("?") + 'c' + "d" + u"e";
    EXPECT_EQ(s, u"a\u00E9\u20ACxy!?cde");
    const unsigned short zeros[] = {0, 0};
    s.append(zeros, 2);
    EXPECT_EQ(s.length(), 12);
}

TEST(StringAppend, TakesPartsOfItself) {
    String s("0123456789abcdef");
    s.append(s.wstr() + 10, 6);
    EXPECT_EQ(s, "0123456789abcdefabcdef");
    const String sharer(s);
    s.append(s);
    EXPECT_EQ(s, "0123456789abcdefabcdef0123456789abcdefabcdef");
    EXPECT_EQ(sharer, "0123456789abcdefabcdef");
}

TEST(StringInsert, ClipsThePosition) {
    const struct {
        int pos;
        const char* result;
    } rows[] = {{0, "-+abc"},  {1, "a-+bc"},  {3, "abc-+"},
                {99, "abc-+"}, {-1, "-+abc"}, {INT_MIN, "-+abc"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pos);
        String s("abc");
        const String copy(s);
        s.insert("-+", row.pos);
        EXPECT_EQ(s, row.result);
        EXPECT_EQ(copy, "abc");
    }
    String s("abc");
    s.insert(s, 1);
    EXPECT_EQ(s, "aabcbc");
    s.insert(s.wstr() + 4, 0);
    EXPECT_EQ(s, "bcaabcbc");
    s.insert(u'\0', 1);
    EXPECT_EQ(s.length(), 9);
}

TEST(StringErase, ClipsItsRange) {
    const struct {
        int start;
        int count;
        const char* result;
    } rows[] = {{0, 2, "cdef"},    {4, 99, "abcd"},
                {1, INT_MAX, "a"}, {2, -1, "ab"},
                {-1, 3, "abcdef"}, {INT_MIN, INT_MIN, "abcdef"},
                {6, 1, "abcdef"},  {INT_MAX, 1, "abcdef"},
                {2, 0, "abcdef"},  {0, 6, ""},
                {0, -1, ""},       {5, 1, "abcde"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.start << ", " << row.count);
        String s("abcdef");
        const String copy(s);
        s.erase(row.start, row.count);
        EXPECT_EQ(s, row.result);
        EXPECT_EQ(s.wstr()[s.length()], 0);
        EXPECT_EQ(copy, "abcdef");
    }
}

TEST(StringSubstr, ClipsItsRange) {
    const struct {
        int start;
        int count;
        const char* result;
    } rows[] = {{0, 2, "ab"},  {4, 99, "ef"},           {1, INT_MAX, "bcdef"},
                {-3, 2, "ab"}, {INT_MIN, -1, "abcdef"}, {6, 1, ""},
                {2, 0, ""},    {INT_MAX, INT_MAX, ""},  {3, INT_MIN, "def"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.start << ", " << row.count);
        EXPECT_EQ(String("abcdef").substr(row.start, row.count), row.result);
    }
}

TEST(StringStrip, RemovesUnitsUpToTheSpaceOnly) {
    const unsigned short blanks[] = {0, 1, 31, 32, 'a', 9, 'b', 13, 10, 0};
    String s(blanks, 10);
    s.strip();
    EXPECT_EQ(s, "a\tb");
    String noBreak(u"\u00A0x\u2028");
    noBreak.strip();
    EXPECT_EQ(noBreak, u"\u00A0x\u2028");
    String all(" \t ");
    all.strip();
    EXPECT_EQ(all.wstr(), String::emptyString().wstr());
}

TEST(StringSplit, WalksAList) {
    String list("a, b ,,c");
    const struct {
        const char* field;
        const char* rest;
    } rows[] = {{"a", " b ,,c"}, {"b", ",c"}, {"", "c"}, {"c", ""}, {"", ""}};
    for (const auto& row : rows) {
        EXPECT_EQ(list.split(','), row.field);
        EXPECT_EQ(list, row.rest);
    }
    String pairs("k => v");
    EXPECT_EQ(pairs.split(" => "), "k");
    EXPECT_EQ(pairs, "v");
}

TEST(StringSplit, TakesAnEmptySeparatorAsNotFound) {
    String s(" all ");
    EXPECT_EQ(s.split(""), "all");
    EXPECT_TRUE(s.isEmpty());
    String itself("abc");
    EXPECT_EQ(itself.split(itself), "");
    EXPECT_TRUE(itself.isEmpty());
}

TEST(StringReplace, ReplacesTheFirstMatchOnly) {
    const struct {
        const char* what;
        const char* with;
        int start;
        int position;
        const char* result;
    } rows[] = {{"ab", "X", 0, 0, "Xcabc"},          {"ab", "X", 1, 3, "abcXc"},
                {"ab", "12345", -9, 0, "12345cabc"}, {"zz", "X", 0, -1, "abcabc"},
                {"ab", "", 4, -1, "abcabc"},         {"", "-", 3, 3, "abc-abc"},
                {"", "-", 7, -1, "abcabc"},          {"abcabc", "", 0, 0, ""},
                {"c", "c", INT_MAX, -1, "abcabc"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.result);
        String s("abcabc");
        EXPECT_EQ(s.replace(row.what, row.with, row.start), row.position);
        EXPECT_EQ(s, row.result);
    }
    String s("aXbX");
    EXPECT_EQ(s.replace(u'X', u'Y', 2), 3);
    EXPECT_EQ(s, "aXbY");
}

TEST(StringReplaceAll, NeverSearchesWhatItInserted) {
    const struct {
        const char* text;
        const char* what;
        const char* with;
        int start;
        int count;
        const char* result;
    } rows[] = {{"aaa", "a", "aa", 0, 3, "aaaaaa"},
                {"aaaa", "aa", "b", 0, 2, "bb"},
                {"aaa", "aa", "ba", 0, 1, "baa"},
                {"a-b-c", "-", "", 0, 2, "abc"},
                {"a-b-c", "-", "", 2, 1, "a-bc"},
                {"abc", "", "x", 0, 0, "abc"},
                {"abab", "ab", "", 0, 2, ""},
                {"abc", "d", "x", 0, 0, "abc"},
                {"", "a", "b", 0, 0, ""}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.result);
        String s(row.text);
        const String copy(s);
        EXPECT_EQ(s.replaceAll(row.what, row.with, row.start), row.count);
        EXPECT_EQ(s, row.result);
        EXPECT_EQ(copy, row.text);
    }
    String s("a.b.c");
    EXPECT_EQ(s.replaceAll(u'.', u'\0'), 2);
    EXPECT_EQ(s, text(u"a\0b\0c"));
}

TEST(StringReplaceAll, TakesPartsOfItself) {
    String s("abXabX");
    EXPECT_EQ(s.replaceAll(s.wstr() + 5, s), 2);
    EXPECT_EQ(s, "ababXabXababXabX");
    String same("abab");
    EXPECT_EQ(same.replaceAll(same.substr(0, 1), same.wstr() + 3), 2);
    EXPECT_EQ(same, "bbbb");
}

} // namespace
