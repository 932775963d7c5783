#include "EncoderTools.h"
#include "support/FailingAllocator.h"

#include <krcore/foundation/ErrorCode.h>

using namespace KrCore;
using namespace KrCore::Testing;
using namespace std::string_literals;

namespace {

constexpr int invalid = ErrorCode::CharacterConversion;
constexpr int partial = ErrorCode::PartialCharacter;

TEST(CodePage, ConvertsBothWaysAtOnceAndInPieces) {
    const struct {
        const char* encoder;
        std::u16string text;
        std::string bytes;
    } rows[] = {
        {"CP1251", u"\u041F\u0440\u0438\u0432\u0435\u0442, world of sixteen",
         "\xCF\xF0\xE8\xE2\xE5\xF2, world of sixteen"},
        {"CP852", u"\u00E9\u2591\u00D3", "\x82\xB0\xE0"},
        {"CP866", u"\u042F", "\x9F"},
        {"CP1255", u"\u05D0\u05B0\u05D1", "\xE0\xC0\xE1"},
        {"CP1258", u"a\u0301b",
         "a\xEC"
         "b"},
        {"CP1026", u"A1a", "\xC1\xF1\x81"},
        {"KOI-8R", u"\u042F", "\xF1"},
        {"CP932", u"A\u65E5\u672C\uFF8A\u30BDz, and a long tail",
         "A\x93\xFA\x96{\xCA\x83\\z, and a long tail"},
        {"GBK", u"\u4E2D\u6587 gbk", "\xD6\xD0\xCE\xC4 gbk"},
        {"CP949", u"\uD55C\uAE00", "\xC7\xD1\xB1\xDB"},
        {"BIG5", u"\u4E2D\u6587x", "\xA4\xA4\xA4\xE5x"},
        {"CP65001", u"\u00E9\U0001F600", "\xC3\xA9\xF0\x9F\x98\x80"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.encoder);
        expectBothWays(named(row.encoder), row.text, row.bytes);
    }
}

/// What a system need not have.
TEST(CodePage, ConvertsPagesThatTheSystemMayHave) {
    const struct {
        const char* encoder;
        std::u16string text;
        std::string bytes;
        int smallestUnits;
        int smallestBytes;
    } rows[] = {
        {"EUC-JP", u"a\u65E5\uFF8A\u9ABCz", "a\xC6\xFC\x8E\xCA\xF1\xEEz", 2, 4},
        {"CP54936", u"a\u4E2D\u00C0\U0001F600", "a\xD6\xD0\x81\x30\x86\x38\x94\x39\xFC\x36", 2, 4},
        {"CP1361", u"\uAC00a",
         "\x88\x61"
         "a",
         2, 4},
        {"UTF-7", u"a\u00E9 + \u65E5\u672C\u8A9E.z", "a+AOk +- +ZeVnLIqe.z", 8, 32},
        {"ISO-2022-JP", u"ab\u65E5\u672Cc\n\u8A9Ed", "ab\x1B$BF|K\\\x1B(Bc\n\x1B$B8l\x1B(Bd", 8,
         32},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.encoder);
        const Encoder* encoder = Encoder::get(row.encoder);
        if (!encoder) continue;
        EXPECT_EQ(decode(*encoder, row.bytes).output, row.text);
        const std::string own = encode(*encoder, row.text).output;
        expectBothWays(*encoder, row.text, own, row.smallestUnits, row.smallestBytes);
    }
}

TEST(CodePage, ReportsWhereItCannotGoOn) {
    const struct {
        const char* encoder;
        std::string bytes;
        int code;
        std::u16string good;
        int consumed;
    } decodings[] = {
        {"CP1253", "ab\xD2z", invalid, u"ab", 2}, // A byte that means nothing.
        {"CP932", "ab\x93", partial, u"ab", 2},
        {"CP932", "\x93\xFA\x81\x20 ..", invalid, u"\u65E5", 2},
        {"CP932", "\x93\xFA\x93\xFA\x81", partial, u"\u65E5\u65E5", 4},
        {"CP65001", "ab\xC3", partial, u"ab", 2},
        {"CP65001", "ab\xED\xA0\x80", invalid, u"ab", 2},
    };
    for (const auto& row : decodings) {
        SCOPED_TRACE(row.encoder);
        EXPECT_EQ(decode(named(row.encoder), row.bytes),
                  (Decoded{row.code, row.good, row.consumed}));
        EXPECT_EQ(decode(named(row.encoder), row.bytes, false).code,
                  row.code == invalid ? invalid : 0);
        int consumed = -1;
        EXPECT_EQ(lengthOf(named(row.encoder), std::string_view(row.bytes), consumed),
                  static_cast<int>(row.good.size()));
        EXPECT_EQ(consumed, row.consumed);
    }
    for (const char* name : {"CP1251", "CP852", "CP932", "CP936"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(encode(named(name), u"ab\u0E01z"), (Encoded{invalid, "ab", 2}));
        EXPECT_EQ(encode(named(name), u"ab\xDC00z"), (Encoded{invalid, "ab", 2}));
    }
    EXPECT_EQ(encode(named("CP932"), u"ab\xD83D"), (Encoded{partial, "ab", 2}));
    EXPECT_EQ(encode(named("CP932"), u"ab\xD83D", false), (Encoded{0, "ab", 2}));
}

TEST(CodePage, KeepsBackWhatIsNotInTheInitialState) {
    const Encoder& utf7 = named("UTF-7");
    EXPECT_EQ(decode(utf7, "a+AOk", false), (Decoded{0, u"a", 1}));
    EXPECT_EQ(decode(utf7, "a+AOk", true), (Decoded{0, u"a\u00E9", 5}));
    EXPECT_EQ(decode(utf7, "a+AO", true), (Decoded{partial, u"a", 1}));
    EXPECT_EQ(decode(utf7, "a+", true), (Decoded{partial, u"a", 1}));
    EXPECT_EQ(decode(utf7, "a+2D0", true), (Decoded{partial, u"a", 1}));
    for (const char* broken : {"a+AO b", "a+!b", "a+2D0-b", "a+AOnYPQ b", "a\xE9"})
        EXPECT_EQ(decode(utf7, broken), (Decoded{invalid, u"a", 1})) << broken;
    EXPECT_EQ(encode(utf7, u"a\xD83D", true), (Encoded{partial, "a", 1}));
    const Encoder* japanese = Encoder::get("ISO-2022-JP");
    if (!japanese) return;
    EXPECT_EQ(decode(*japanese, "a\x1B$BF|K\\", false), (Decoded{0, u"a", 1}));
    EXPECT_EQ(decode(*japanese, "a\x1B$BF|K\\", true), (Decoded{0, u"a\u65E5\u672C", 8}));
    EXPECT_EQ(decode(*japanese, "a\x1B$BF|K", true), (Decoded{partial, u"a", 1}));
    EXPECT_EQ(decode(*japanese, "a\x1B$", true), (Decoded{partial, u"a", 1}));
    EXPECT_EQ(encode(*japanese, u"ab\u0E01"), (Encoded{invalid, "ab", 2}));
}

TEST(CodePage, ConvertsLongTextWithoutLosingItsPlace) {
    std::u16string text;
    for (int i = 0; i < 3000; ++i)
        text += i % 7 == 0 ? u"\u65E5" : i % 5 == 0 ? u"plain ASCII in between" : u"\u30A2";
    for (const char* name : {"CP932", "UTF-7", "EUC-JP", "ISO-2022-JP"}) {
        SCOPED_TRACE(name);
        const Encoder* encoder = Encoder::get(name);
        if (!encoder) continue;
        const std::string bytes = encode(*encoder, text, true, 1 << 18).output;
        EXPECT_EQ(decode(*encoder, bytes, true, 1 << 18).output, text);
    }
}

TEST(CodePage, GivesBackScratchMemoryWhenItIsShort) {
    const Encoder& utf7 = named("UTF-7");
    std::u16string text(2000, u'\u65E5');
    text[1000] = u'\uFFFD'; // Which a system also puts where it cannot convert.
    const std::string longRun = encode(utf7, text, true, 20000).output;
    EXPECT_EQ(decode(utf7, longRun).output, text);
    forEachFailure([&] {
        int consumed = 0;
        EXPECT_EQ(lengthOf(utf7, std::string_view(longRun), consumed), 2000);
    });
}

} // namespace
