#include <krcore/text/Strings16.h>

#include <gtest/gtest.h>

namespace {

constexpr unsigned short empty[] = {0};
constexpr unsigned short abcab[] = {'a', 'b', 'c', 'a', 'b', 0};
constexpr unsigned short ABCAC[] = {'A', 'B', 'C', 'A', 'C', 0};
constexpr unsigned short cab[] = {'c', 'a', 'b', 0};
constexpr unsigned short abd[] = {'a', 'b', 'd', 0};
constexpr unsigned short high[] = {0xFFFF, 0};
constexpr unsigned short micro[] = {0x00B5, 0};
constexpr unsigned short capitalMu[] = {0x039C, 0};

} // namespace

TEST(Strings16, MeasureAndCopy) {
    unsigned short copy[8] = {1, 1, 1, 1, 1, 1, 1, 1};
    EXPECT_EQ(strlen16(abcab), 5);
    EXPECT_EQ(strlen16(empty), 0);
    EXPECT_EQ(strlen16(nullptr), 0);
    EXPECT_EQ(strcpy16(copy, abcab), copy);
    EXPECT_EQ(strcmp16(copy, abcab), 0);
    EXPECT_EQ(copy[6], 1) << "nothing is written behind the terminator";
    strcpy16(copy, nullptr);
    EXPECT_EQ(copy[0], 0);
}

TEST(Strings16, CompareByTheDifferenceOfUnits) {
    EXPECT_EQ(strcmp16(abcab, abd), -1);
    EXPECT_EQ(strcmp16(abcab, empty), 'a');
    EXPECT_EQ(strcmp16(empty, high), -0xFFFF);
    EXPECT_EQ(strcmp16(nullptr, empty), 0);
    EXPECT_EQ(strncmp16(abcab, abd, 2), 0);
    EXPECT_EQ(strncmp16(abcab, abd, 3), -1);
    EXPECT_EQ(strncmp16(abcab, abd, 0), 0);
    EXPECT_EQ(strncmp16(abcab, abd, -1), 0);
    EXPECT_EQ(strncmp16(cab, cab, 100), 0) << "the terminator ends it first";
}

TEST(Strings16, CompareWithoutRegardToCase) {
    EXPECT_EQ(stricmp16(abcab, ABCAC), -1);
    EXPECT_EQ(strnicmp16(abcab, ABCAC, 4), 0);
    EXPECT_EQ(strnicmp16(abcab, ABCAC, 5), -1);
    EXPECT_EQ(stricmp16(micro, capitalMu), 0);
    EXPECT_EQ(strnicmp16(abcab, high, 0), 0);
}

TEST(Strings16, Search) {
    EXPECT_EQ(strchr16(abcab, 'b'), abcab + 1);
    EXPECT_EQ(strchr16(abcab, 'x'), nullptr);
    EXPECT_EQ(strchr16(abcab, 0), abcab + 5);
    EXPECT_EQ(strchr16(nullptr, 'a'), nullptr);
    EXPECT_EQ(strstr16(abcab, cab), abcab + 2);
    EXPECT_EQ(strstr16(abcab, abd), nullptr);
    EXPECT_EQ(strstr16(abcab, empty), abcab);
    EXPECT_EQ(strstr16(empty, empty), empty);
    EXPECT_EQ(strstr16(empty, cab), nullptr);
    EXPECT_EQ(memchr16(abcab, 'b', 1), nullptr);
    EXPECT_EQ(memchr16(abcab, 'b', 2), abcab + 1);
    EXPECT_EQ(memchr16(abcab, 0, 6), abcab + 5);
    EXPECT_EQ(memchr16(abcab, 'a', -1), nullptr);
}
