#include "EncoderTools.h"

#include <krcore/foundation/ErrorCode.h>

using namespace KrCore;
using namespace KrCore::Testing;
using namespace std::string_literals;

namespace {

constexpr int invalid = ErrorCode::CharacterConversion;
constexpr int partial = ErrorCode::PartialCharacter;

TEST(Encoder, ConvertsBothWaysAtOnceAndInPieces) {
    const struct {
        const char* encoder;
        std::u16string text;
        std::string bytes;
    } rows[] = {
        {"ASCII", u"\0Plain text, long enough for a block.\x7F"s,
         "\0Plain text, long enough for a block.\x7F"s},
        {"BINARY", u"A\x80\x9F\xFF 0123456789abcdef", "A\x80\x9F\xFF 0123456789abcdef"},
        {"CP1252", u"\u20ACuro na\u00EFve \u0153uvre \u0178 \u0081\u009D and more of it",
         "\x80uro na\xEFve \x9Cuvre \x9F \x81\x9D and more of it"},
        {"MACINTOSH", u"\u00C4\u20AC\uF8FF\u02C7 Se\u00F1or, h\u00E9 h\u00E9",
         "\x80\xDB\xF0\xFF Se\x96or, h\x8E h\x8E"},
        {"UTF-8", u"a\u00E9\u07FF\u0800\u20AC\uFFFD\U00010000\U0010FFFF zzzzzzzzzzzzzzzz\u00DF",
         "a\xC3\xA9\xDF\xBF\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBD\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"
         " zzzzzzzzzzzzzzzz\xC3\x9F"},
        {"UTF-16BE", u"A\u20AC\U0001F600\xD800", "\0A\x20\xAC\xD8\x3D\xDE\x00\xD8\x00"s},
        {"UTF-16LE", u"A\u20AC\U0001F600\xDC00", "A\0\xAC\x20\x3D\xD8\x00\xDE\x00\xDC"s},
        {"UTF-32BE", u"A\u20AC\U0001F600", "\0\0\0A\0\0\x20\xAC\0\x01\xF6\0"s},
        {"UTF-32LE", u"A\u20AC\U0001F600", "A\0\0\0\xAC\x20\0\0\0\xF6\x01\0"s},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.encoder);
        expectBothWays(named(row.encoder), row.text, row.bytes);
    }
}

TEST(Encoder, ReportsWhereItCannotGoOn) {
    const struct {
        const char* encoder;
        std::u16string good;
        std::string bytes; // good, then what is at fault
        int code;
    } decodings[] = {
        {"ASCII", u"abc", "abc\x80", invalid},
        {"ASCII", u"0123456789abcdefgh", "0123456789abcdefgh\xFFmore and more of it", invalid},
        {"UTF-32BE", u"A", "\0\0\0A\0\0\xD8\0"s, invalid},
        {"UTF-32BE", u"A", "\0\0\0A\0\x11\0\0"s, invalid},
        {"UTF-32BE", u"A", "\0\0\0A\0\0\0"s, partial},
        {"UTF-16LE", u"A", "A\0B"s, partial},
    };
    for (const auto& row : decodings) {
        SCOPED_TRACE(row.encoder);
        const auto goodBytes = encode(named(row.encoder), row.good).output;
        const Decoded expected = {row.code, row.good, static_cast<int>(goodBytes.size())};
        EXPECT_EQ(decode(named(row.encoder), row.bytes), expected);
        // Also when the output has no room for more than what is good.
        const auto exact = static_cast<int>(row.good.size());
        EXPECT_EQ(decode(named(row.encoder), row.bytes, true, exact), expected);
        int consumed = -1;
        EXPECT_EQ(lengthOf(named(row.encoder), std::string_view(row.bytes), consumed), exact);
        EXPECT_EQ(consumed, static_cast<int>(goodBytes.size()));
    }

    const struct {
        const char* encoder;
        std::u16string text; // "ab", then what is at fault
        int code;
    } encodings[] = {
        {"ASCII", u"ab\x80", invalid},      {"BINARY", u"ab\u0100", invalid},
        {"CP1252", u"ab\x80", invalid},     {"MAC-ROMAN", u"ab\u0410", invalid},
        {"CP1252", u"ab\xD83D", invalid},   {"UTF-8", u"ab\xDC00zz", invalid},
        {"UTF-8", u"ab\xD800zz", invalid},  {"UTF-8", u"ab\xD800", partial},
        {"UTF-32LE", u"ab\xDC00", invalid}, {"UTF-32LE", u"ab\xD800\xD800", invalid},
        {"UTF-32LE", u"ab\xD800", partial},
    };
    for (const auto& row : encodings) {
        SCOPED_TRACE(row.encoder);
        const auto good = encode(named(row.encoder), u"ab").output;
        EXPECT_EQ(encode(named(row.encoder), row.text), (Encoded{row.code, good, 2}));
        EXPECT_EQ(encode(named(row.encoder), row.text, true, static_cast<int>(good.size())),
                  (Encoded{row.code, good, 2}));
    }
}

TEST(Encoder, RefusesWhatIsNoStrictUtf8) {
    const Encoder& utf8 = Encoder::getUtf8();
    const struct {
        const char* bytes;
        int code;
    } rows[] = {
        {"\x80", invalid},
        {"\xBF", invalid},
        {"\xC0\x80", invalid},
        {"\xC1\xBF", invalid},
        {"\xC3(", invalid},
        {"\xE0\x9F\xBF", invalid},
        {"\xED\xA0\x80", invalid},
        {"\xED\xBF\xBF", invalid},
        {"\xE2(\xA1", invalid},
        {"\xE2\x82(", invalid},
        {"\xF0\x8F\xBF\xBF", invalid},
        {"\xF4\x90\x80\x80", invalid},
        {"\xF5\x80\x80\x80", invalid},
        {"\xFE", invalid},
        {"\xFF", invalid},
        {"\xF0\x90\x80(", invalid},
        // Cut off, but wrong already.
        {"\xE0\x80", invalid},
        {"\xF4\x90", invalid},
        {"\xED\xA0", invalid},
        // Cut off and good so far.
        {"\xC3", partial},
        {"\xE0\xA0", partial},
        {"\xE2", partial},
        {"\xF0", partial},
        {"\xF0\x90", partial},
        {"\xF4\x8F\xBF", partial},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.bytes));
        EXPECT_EQ(decode(utf8, row.bytes), (Decoded{row.code, u"", 0}));
        // The same in the middle of a text, where there is room to read ahead.
        const std::string inside = "caf\xC3\xA9 "s + row.bytes;
        EXPECT_EQ(decode(utf8, inside + "zzzz").code, invalid);
        EXPECT_EQ(decode(utf8, inside + "zzzz").output, u"caf\u00E9 ");
        EXPECT_EQ(decode(utf8, inside, false),
                  (Decoded{row.code == partial ? 0 : invalid, u"caf\u00E9 ", 6}));
    }
}

TEST(Encoder, DoesNotDivideACharacterThatDoesNotFit) {
    EXPECT_EQ(decode(Encoder::getUtf8(), "a\xF0\x9F\x98\x80z", true, 2), (Decoded{0, u"a", 1}));
    EXPECT_EQ(encode(Encoder::getUtf8(), u"a\u20ACz", true, 3), (Encoded{0, "a", 1}));
    EXPECT_EQ(encode(Encoder::getUtf32(), u"ab", true, 7).consumed, 1);
    EXPECT_EQ(encode(named("UTF-16BE"), u"ab", true, 3), (Encoded{0, "\0a"s, 1}));
    EXPECT_EQ(decode(Encoder::getUtf8(), "abc", true, 0), (Decoded{0, u"", 0}));
}

TEST(Encoder, TakesNothingFromEmptyAndNegativeCounts) {
    for (const char* name : {"ASCII", "UTF-8", "UTF-16", "UTF-32", "CP1252", "CP866", "CP932"}) {
        SCOPED_TRACE(name);
        int inCount = -5;
        int outCount = -5;
        EXPECT_EQ(named(name).toUnicode(nullptr, inCount, nullptr, outCount, true), 0);
        EXPECT_EQ(inCount, 0);
        EXPECT_EQ(outCount, 0);
        EXPECT_EQ(named(name).toMBCS(nullptr, inCount, nullptr, outCount, true), 0);
        EXPECT_EQ(named(name).getMBCSLength(nullptr, -1, inCount), 0);
    }
}

TEST(Encoder, WritesNothingWithoutABuffer) {
    for (const char* name : {"ASCII", "UTF-8", "UTF-16", "CP866", "CP932", "UTF-7"}) {
        SCOPED_TRACE(name);
        const unsigned short text[] = {'a', 'b'};
        int inCount = 2;
        int outCount = 0;
        EXPECT_EQ(named(name).toMBCS(text, inCount, nullptr, outCount, true), 0);
        EXPECT_EQ(inCount, 0);
        EXPECT_EQ(outCount, 0);
    }
}

TEST(Encoder, DropsALeadingByteOrderMarkAndFollowsIt) {
    EXPECT_EQ(decode(named("UTF-16BE"), "\xFE\xFF\0A"s).output, u"A");
    EXPECT_EQ(decode(named("UTF-16LE"), "\xFF\xFE"s + "A\0\xFF\xFE"s).output, u"A\uFEFF");
    EXPECT_EQ(decode(named("UTF-16LE"), "\xFE\xFF\0A"s).output, u"\uFFFE\u4100");
    EXPECT_EQ(decode(named("UTF-16"), "\xFE\xFF\0A"s).output, u"A");
    EXPECT_EQ(decode(named("UTF-16"), "\xFF\xFE"s + "A\0"s).output, u"A");
    EXPECT_EQ(decode(named("UTF-32"), "\0\0\xFE\xFF\0\0\0A"s).output, u"A");
    EXPECT_EQ(decode(named("UTF-32"), "\xFF\xFE\0\0A\0\0\0"s).output, u"A");
    EXPECT_EQ(decode(named("UTF-32LE"), "\0\0\xFE\xFF\0\0\0A"s).code, invalid);
    EXPECT_EQ(decode(Encoder::getUtf8(), "\xEF\xBB\xBF"s + "A").output, u"\uFEFFA");
}

TEST(Encoder, Iso88591ReadsTheLettersOfCp1252) {
    EXPECT_EQ(decode(named("ISO-8859-1"), "\x80\xE9").output, u"\u20AC\u00E9");
    EXPECT_EQ(encode(named("LATIN1"), u"\u20AC\u00E9").output, "\x80\xE9");
}

TEST(Encoder, ConvertsEveryByteOfTheSingleByteSetsBackToItself) {
    for (const char* name : {"ASCII", "BINARY", "CP1252", "ISO-8859-1", "MACINTOSH"}) {
        SCOPED_TRACE(name);
        const int end = name == "ASCII"s ? 0x80 : 0x100;
        for (int byte = 0; byte < end; ++byte) {
            const std::string bytes(1, static_cast<char>(byte));
            EXPECT_EQ(encode(named(name), decode(named(name), bytes).output).output, bytes);
        }
    }
}

} // namespace
