// Conversion to and from other character sets.

#include "support/TextSupport.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/text/Encoder.h>

#include <cstring>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(StringEncode, LendsTheBytesWithFourZerosBehind) {
    const String s(u"\u00E9\u20AC");
    const char* bytes = s.encode(&Encoder::getUtf8());
    EXPECT_EQ(std::memcmp(bytes, "\xC3\xA9\xE2\x82\xAC\0\0\0\0", 9), 0);
    EXPECT_EQ(String::getEncodedLength(), 5);
    EXPECT_EQ(std::memcmp(String().encode(nullptr), "\0\0\0\0", 4), 0);
    EXPECT_EQ(String::getEncodedLength(), 0);
}

TEST(StringEncode, ReportsWhatItCannotEncode) {
    const char* bytes = nullptr;
    int length = -1;
    EXPECT_EQ(String("ok").encode(bytes, length, &Encoder::getUtf8()), ErrorCode::Ok);
    EXPECT_EQ(length, 2);
    EXPECT_NE(text(u"ab\xD800").encode(bytes, length, &Encoder::getUtf8()), ErrorCode::Ok);
    EXPECT_EQ(length, 0);
    EXPECT_STREQ(bytes, "");
    EXPECT_EQ(String(u"ab\u20AC").encode(bytes, length, &Encoder::getAscii()),
              ErrorCode::CharacterConversion);
}

TEST(StringEncode, IsNotDisturbedByInnerConversions) {
    const char* bytes = String("kept").encode(&Encoder::getUtf8());
    String uri(u"\u00E9 /");
    EXPECT_TRUE(uri.encodeURI(""));
    EXPECT_TRUE(uri.decodeURI());
    String().print("%s", "text");
    EXPECT_STREQ(bytes, "kept");
    EXPECT_EQ(String::getEncodedLength(), 4);
}

TEST(StringEncode, GivesALargeBufferBack) {
    const auto heapBytes = [] {
        int blocks = 0, bytes = 0;
        Heap::getMemoryStatistics(blocks, bytes);
        return bytes;
    };
    String("x").encode(&Encoder::getUtf8());
    const int before = heapBytes();
    String large;
    large.setup('x', 1000000);
    large.encode(&Encoder::getUtf8());
    large.clear();
    EXPECT_GT(heapBytes(), before + 900000);
    String("x").encode(&Encoder::getUtf8());
    EXPECT_EQ(heapBytes(), before);
}

TEST(StringUtf32, GoesBothWays) {
    const unsigned int units[] = {'a', 0x1F600, 0xD800, 0};
    String s;
    EXPECT_EQ(s.decode(units), ErrorCode::Ok);
    EXPECT_EQ(s, text(u"a\xD83D\xDE00\xD800"));
    const unsigned int* encoded = s.encodeUtf32();
    EXPECT_EQ(std::memcmp(encoded, units, sizeof units), 0);
    EXPECT_EQ(String::getEncodedLength(), 12);
}

TEST(StringDecode, ReplacesTheTextOrLeavesIt) {
    const struct {
        const char* bytes;
        int length;
        int code;
        const char16_t* result;
    } rows[] = {{"\xC3\xA9x", -1, ErrorCode::Ok, u"\u00E9x"},
                {"\xC3\xA9x", 2, ErrorCode::Ok, u"\u00E9"},
                {"", -1, ErrorCode::Ok, u""},
                {nullptr, 5, ErrorCode::Ok, u""},
                {"ab\xFF", -1, ErrorCode::CharacterConversion, u"old"},
                {"ab\xE2\x82", -1, ErrorCode::PartialCharacter, u"old"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.code);
        String s("old");
        EXPECT_EQ(s.decode(row.bytes, row.length, &Encoder::getUtf8()), row.code);
        EXPECT_EQ(s, row.result);
    }
    EXPECT_EQ(String("\xC3\xA9", &Encoder::getUtf8()), u"\u00E9");
    EXPECT_EQ(String("\xFF", &Encoder::getUtf8()), "");
    EXPECT_EQ(String("a", nullptr), "a");
}

} // namespace
