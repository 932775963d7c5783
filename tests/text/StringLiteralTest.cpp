// Script literals, URIs and line ends.

#include "support/TextSupport.h"

#include <krcore/text/Encoder.h>

#include <climits>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(StringEscape, WritesAScriptLiteral) {
    EXPECT_EQ(String("plain").escape(true), "\"plain\"");
    EXPECT_EQ(String().escape(false), "\"\"");
    EXPECT_EQ(text(u"\b\t\n\f\r\"\\").escape(false), "\"\\b\\t\\n\\f\\r\\\"\\\\\"");
    EXPECT_EQ(text(u"\0\v\x7F'").escape(true), "\"\\x00\\x0B\\x7F'\"");
    EXPECT_EQ(text(u"\u00E9\xD83D").escape(true), "\"\\u00E9\\uD83D\"");
    EXPECT_EQ(text(u"\u00E9\xD83D").escape(false), text(u"\"\u00E9\xD83D\""));
}

TEST(StringParse, ReadsOneLiteralOrToken) {
    const struct {
        const char16_t* text;
        bool isComplete;
        const char16_t* result;
        int next;
    } rows[] = {{u"\"a'b\" rest", true, u"a'b", 5},
                {u"'a\"b'", true, u"a\"b", 5},
                {u"bare 'token' \nnext", true, u"bare 'token' ", 14},
                {u"bare\r\nnext", true, u"bare", 6},
                {u"bare\u2028next", true, u"bare", 5},
                {u"", true, u"", 0},
                {u"\"", false, u"", 1},
                {u"'open", false, u"open", 5},
                {u"'op\ren'", false, u"op", 4},
                {u"'a\\\r\nb\\\u2029c'", true, u"abc", 10},
                {u"'\\b\\t\\n\\v\\f\\r\\q\\'\\\\'", true, u"\b\t\n\v\f\rq'\\", 20},
                {u"'\\x41\\X4a\\u20AC\\U1F600'", true, u"AJ\u20AC\U0001F600", 23},
                {u"'\\U0000004100'", true, u"A00", 14},
                {u"'\\U110000'", false, u"", 9},
                {u"'\\x4'", false, u"", 4},
                {u"'\\uD83'", false, u"", 6},
                {u"'\\U'", false, u"", 3},
                {u"'\\uD83D'", true, u"\xD83D", 8},
                {u"'\\1018\\3777\\4007\\8'", true, u"A8\u00FF7 078", 19},
                {u"end\\", true, u"end\\", 4},
                {u"'end\\", false, u"end\\", 5}};
    for (const auto& row : rows) {
        const String source(row.text);
        SCOPED_TRACE(source);
        String result("old");
        int next = 0;
        EXPECT_EQ(source.parse(result, next), row.isComplete);
        EXPECT_EQ(next, row.next);
        EXPECT_EQ(result, row.result);
    }
}

TEST(StringParse, ClipsThePositionAndTakesItselfAsResult) {
    String s("'ab' 'cd'");
    int pos = INT_MIN;
    String result;
    EXPECT_TRUE(s.parse(result, pos));
    EXPECT_EQ(pos, 4);
    pos = 5;
    EXPECT_TRUE(s.parse(s, pos));
    EXPECT_EQ(s, "cd");
    pos = INT_MAX;
    EXPECT_TRUE(s.parse(result, pos));
    EXPECT_EQ(pos, 2);
    EXPECT_EQ(result, "");
}

TEST(StringParse, TakesTheLiteralOffTheFrontOnlyWhenItIsWhole) {
    String s("'one'two");
    String result;
    EXPECT_TRUE(s.parse(result));
    EXPECT_EQ(result, "one");
    EXPECT_EQ(s, "two");
    String open("'open");
    EXPECT_FALSE(open.parse(result));
    EXPECT_EQ(result, "open");
    EXPECT_EQ(open, "'open");
}

TEST(StringUri, EncodesEveryByteThatIsNotKept) {
    const struct {
        const char16_t* text;
        const char* keep;
        const char* encoded;
    } rows[] = {{u"aZ09", nullptr, "aZ09"},
                {u"a b/c%", "/", "a%20b/c%25"},
                {u"\u00E9\u20AC\U0001F600", "\xE9", "%C3%A9%E2%82%AC%F0%9F%98%80"},
                {u"", "", ""}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.encoded);
        String s(row.text);
        EXPECT_TRUE(s.encodeURI(row.keep));
        EXPECT_EQ(s, row.encoded);
        EXPECT_TRUE(s.decodeURI());
        EXPECT_EQ(s, row.text);
    }
    String lone = text(u"a\xD800 b\0");
    EXPECT_FALSE(lone.encodeURI(""));
    EXPECT_EQ(lone, text(u"a\xD800 b\0"));
}

TEST(StringUri, DecodesWhatItCan) {
    const struct {
        const char16_t* text;
        bool isValid;
        const char16_t* decoded;
    } rows[] = {{u"%41%4a", true, u"AJ"},      {u"100%", true, u"100%"},
                {u"%4", true, u"%4"},          {u"%zz%2", true, u"%zz%2"},
                {u"%%41", true, u"%A"},        {u"\u00E9%C3%A9", true, u"\u00E9\u00E9"},
                {u"%2541", true, u"%41"},      {u"%C3", false, u"%C3"},
                {u"%C0%80", false, u"%C0%80"}, {u"%ED%A0%80", false, u"%ED%A0%80"}};
    for (const auto& row : rows) {
        String s(row.text);
        SCOPED_TRACE(s);
        EXPECT_EQ(s.decodeURI(), row.isValid);
        EXPECT_EQ(s, row.decoded);
    }
}

TEST(StringLineEnds, BecomeTheOneWanted) {
    const struct {
        const char* text;
        int kind;
        int count;
        const char* result;
    } rows[] = {{"a\r\nb\rc", 3, 2, "a\nb\nc"},
                {"a\r\nb\rc", 2, 2, "a\rb\rc"},
                {"a\r\nb\rc", 1, 2, "a\r\nb\r\nc"},
                {"a\nb", 0, 1, "a\r\nb"},
                {"a\nb", 7, 1, "a\r\nb"},
                {"\n\r\r\n\n", 3, 4, "\n\n\n\n"},
                {"none", 3, 0, "none"},
                {"", 1, 0, ""},
                {"\r\n", 1, 1, "\r\n"},
                {"\r", 1, 1, "\r\n"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.result);
        String s(row.text);
        const String copy(s);
        EXPECT_EQ(s.convertLF(static_cast<CRLFEncoding>(row.kind)), row.count);
        EXPECT_EQ(s, row.result);
        EXPECT_EQ(s.wstr() == copy.wstr(), s == copy) << "unchanged text stays shared";
    }
}

} // namespace
