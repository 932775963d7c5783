#include "files/EncodingDetection.h"

#include <gtest/gtest.h>

#include <string>

using namespace KrCore;
using namespace std::string_literals;

namespace {

std::string detect(const std::string& bytes) {
    const DetectedEncoding found = detectEncoding(bytes.data(), static_cast<int>(bytes.size()));
    const std::string mark = found.markLength > 0 ? " " + std::to_string(found.markLength) : "";
    return (found.name ? found.name : "") + mark;
}

TEST(EncodingDetection, KnowsMarksAndPatterns) {
    const struct {
        std::string bytes;
        const char* result;
    } rows[] = {
        {"\xFF\xFE\0\0"s, "UCS-4LE 4"},
        {"\xFF\xFE"s, "UCS-2LE 2"},
        {"\xFF\xFE\0"s, "UCS-2LE 2"},
        {"\xFE\xFF"s, "UCS-2BE 2"},
        {"\xEF\xBB\xBF"s, "UTF8 3"},
        {"\0\0\xFE\xFF"s, "UCS-4BE"},
        {"\0a\0b"s, "UCS-2BE"},
        {"\0\0\0a"s, "UCS-4BE"},
        {"a\0b\0"s, "UCS-2LE"},
        {"a\0\0\0"s, "UCS-4LE"},
        {"ab\0\0"s, "UCS-4LE"},
        {"a\0"s, ""},
        {"a\0b"s, ""},
        {"\0\0\0\0"s, ""},
        {""s, ""},
        {"plain"s, ""},
        {"gr\xC3\xBC\xC3\x9F"s, "UTF-8"},
        {"\xC3"s, ""},
        {"a\xE4\xB8"s, ""},
        {"\xC3\xBC\xFC"s, ""},
        {"\x80"s, ""},
        {"\xC0\x80"s, "UTF-8"},
        {"\xED\xA0\x80"s, "UTF-8"},
        {"\xF8\x88\x80\x80\x80"s, "UTF-8"},
        {"\xFC\x84\x80\x80\x80\x80"s, "UTF-8"},
        {"\xFE\x80\x80"s, ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(detect(row.bytes), row.result) << testing::PrintToString(row.bytes);
}

TEST(EncodingDetection, LooksAtTheBeginningOnly) {
    const std::string ascii(2040, 'a');
    const std::string full(2048 - 2040 - 2, 'a');
    EXPECT_EQ(detect(ascii + "\xC3\xBC" + full), "UTF-8") << "begins in the last byte that counts";
    EXPECT_EQ(detect(ascii + "\xC3" + full + "a"), "") << "and goes on badly";
    EXPECT_EQ(detect(ascii + "a\xC3\xBC" + full), "") << "begins behind it";
    EXPECT_EQ(detect("\xC3\xBC" + ascii + "\xFF" + full), "UTF-8");
    EXPECT_EQ(detect("\xC3\xBC" + ascii.substr(3) + "\xC3"), "") << "cut off by the end";
}

} // namespace
