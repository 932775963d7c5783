// Construction, sharing, sizes and comparison.

#include "support/TextSupport.h"

#include <unordered_set>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

int heapBytes() {
    int blocks = 0, bytes = 0;
    Heap::getMemoryStatistics(blocks, bytes);
    return bytes;
}

/// The gross size of the heap block behind a string of the given capacity.
constexpr int blockSize(int capacity) { return (12 + 2 * capacity + 8 + 15) / 16 * 16; }

TEST(StringConstruction, TakesNullAndEmptyTextOfAnyKindAsEmpty) {
    const int before = heapBytes();
    const unsigned short none[] = {0};
    const unsigned int noneWide[] = {0};
    const String rows[] = {String(),
                           String(""),
                           String(static_cast<const char*>(nullptr)),
                           String(none),
                           String(static_cast<const unsigned short*>(nullptr), 5),
                           String(noneWide),
                           String(static_cast<const unsigned int*>(nullptr)),
                           String(u"abc", 0)};
    for (const String& row : rows) {
        EXPECT_EQ(row.length(), 0);
        EXPECT_EQ(row.wstr(), String::emptyString().wstr());
    }
    EXPECT_EQ(heapBytes(), before);
}

TEST(StringConstruction, WidensBytesAndDecodesUtf32) {
    EXPECT_EQ(String("\x41\xE9\xFF"), u"A\u00E9\u00FF");
    const unsigned int wide[] = {0x41, 0x1F600, 0x110000, 0xD800, 0xFFFFFFFF, 0};
    EXPECT_EQ(String(wide), text(u"A\xD83D\xDE00\xFFFD\xD800\xFFFD"));
    EXPECT_EQ(String(wide, 2), u"A\U0001F600");
    const unsigned short withZero[] = {'a', 0, 'b'};
    EXPECT_EQ(String(withZero, 3).length(), 3);
}

TEST(StringConstruction, WidensSingleBytesEverywhere) {
    String s;
    s.setup('\xE9', 2);
    s.insert('\xFF', 0);
    s.set(1, '\xC9');
    EXPECT_EQ(s, u"\u00FF\u00C9\u00E9");
    EXPECT_EQ(s.find('\xE9'), 2);
    EXPECT_EQ(s.replaceAll('\xE9', '\xE8'), 1);
    EXPECT_EQ(s.replace('\xC9', '\xC8'), 1);
    EXPECT_EQ('\xA9' + s, u"\u00A9\u00FF\u00C8\u00E8");
}

TEST(StringAssignment, SurvivesItsOwnText) {
    String s("abcdef");
    s = *&s;
    EXPECT_EQ(s, "abcdef");
    s = s.wstr() + 2;
    EXPECT_EQ(s, "cdef");
    s = '\xE9';
    EXPECT_EQ(s, u"\u00E9");
    s = "";
    EXPECT_EQ(s.wstr(), String::emptyString().wstr());
}

TEST(StringSharing, CopiesShareUntilSomebodyWrites) {
    String a("shared");
    String b(a);
    EXPECT_EQ(a.wstr(), b.wstr());
    b.set(-1, 'x');
    b.set(6, 'x');
    EXPECT_EQ(a.wstr(), b.wstr()) << "an index outside must not unshare";
    b.set(0, 'S');
    EXPECT_EQ(a, "shared");
    EXPECT_EQ(b, "Shared");
    EXPECT_EQ(a.substr(0, 99).wstr(), a.wstr());
}

TEST(StringSharing, KeepsAMarkedBufferToItself) {
    String a("marked");
    a.makeUnique();
    const String b(a);
    EXPECT_NE(a.wstr(), b.wstr());
    const String c(b);
    EXPECT_EQ(b.wstr(), c.wstr()) << "the copy is not marked";
    a.append(a);
    a.insert(a, 3);
    a.replaceAll("ark", "ARK!");
    EXPECT_NE(String(a).wstr(), a.wstr()) << "the mark stays over growth";
    EXPECT_EQ(a, "marmARK!edmARK!edkedmARK!ed");

    String empty;
    empty.makeUnique();
    EXPECT_NE(empty.wstr(), String::emptyString().wstr());
    EXPECT_EQ(String().wstr(), String::emptyString().wstr());
}

TEST(StringSize, GrowsByPowersOfTwoAndShrinksBeyondTheSlack) {
    const struct {
        int length;
        int capacity;
    } rows[] = {{1, 16},       {15, 16},      {16, 32},     {31, 32}, {32, 64},
                {7000, 8192},  {6500, 8192},  {6143, 8192}, {10, 16}, {8191, 8192},
                {8192, 16384}, {8193, 16384}, {6142, 8192}, {0, 0}};
    const int before = heapBytes();
    String s;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.length);
        s.adjust(row.length);
        EXPECT_EQ(s.length(), row.length);
        EXPECT_EQ(s.wstr()[row.length], 0);
        EXPECT_EQ(heapBytes() - before, row.capacity ? blockSize(row.capacity) : 0);
    }
}

TEST(StringSize, KeepsWhatFitsWhenItChanges) {
    String s("abcdef");
    const String copy(s);
    s.adjust(3);
    EXPECT_EQ(s, "abc");
    s.adjust(-5);
    EXPECT_EQ(s, "");
    s.setup('x', 3);
    EXPECT_EQ(s, "xxx");
    s.setup('x', -1);
    EXPECT_TRUE(s.isEmpty());
    EXPECT_EQ(copy, "abcdef");
}

TEST(StringCompare, OrdersByTheFirstDifferenceAndThenByLength) {
    const struct {
        const char* left;
        const char* right;
        int cmp;
        int ucmp;
    } rows[] = {{"abc", "abcd", -1, -1},
                {"abcd", "abc", 1, 1},
                {"a", "A", 32, 0},
                {"a", "c", -2, -2},
                {"", "", 0, 0},
                {"", "a", -1, -1},
                {"abcdefghijklmnopqrstuvwxyz", "abcdefghijklmnopqrstuvwxyZ", 32, 0},
                {"x\xE9", "X\xC9", 32, 0},
                {"\xFF", "a", 158, 0x178 - 'A'}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.left);
        SCOPED_TRACE(row.right);
        const String left(row.left), right(row.right);
        EXPECT_EQ(left.cmp(right), row.cmp);
        EXPECT_EQ(left.cmp(row.right), row.cmp);
        EXPECT_EQ(left.cmp(right.wstr()), row.cmp);
        EXPECT_EQ(left.ucmp(right), row.ucmp);
        EXPECT_EQ(left.ucmp(row.right), row.ucmp);
        EXPECT_EQ(left.ucmp(right.wstr()), row.ucmp);
        EXPECT_EQ(left == right, row.cmp == 0);
        EXPECT_EQ(left < row.right, row.cmp < 0);
        EXPECT_EQ(row.left >= right, row.cmp >= 0);
    }
}

TEST(StringCompare, LooksAtNoMoreThanTheGivenUnits) {
    const String s("abcX");
    const unsigned short unterminated[] = {'a', 'b', 'c'};
    EXPECT_EQ(s.ncmp(unterminated, 3), 0);
    EXPECT_EQ(s.ncmp("zzz", 0), 0);
    EXPECT_EQ(s.ncmp("abcY", -1), -1);
    EXPECT_EQ(s.ncmp(String("ab"), 3), 1);
    EXPECT_EQ(s.ncmp(String("ab"), 2), 0);
    EXPECT_EQ(s.nucmp("ABCx!", 4), 0);
    EXPECT_EQ(s.nucmp(unterminated, 3), 0);
    EXPECT_EQ(s.nucmp(static_cast<const char*>(nullptr), 3), 1);
    const unsigned short zeros[] = {'a', 0, 'b'};
    EXPECT_EQ(String(zeros, 3).cmp("a"), 1);
}

TEST(StringCase, MapsUnitByUnitAndTellsWhetherAnythingChanged) {
    String s(u"Stra\u00DFe \u00C4\u0130");
    const String copy(s);
    EXPECT_TRUE(s.toLower());
    EXPECT_EQ(s, u"stra\u00DFe \u00E4i");
    EXPECT_FALSE(s.toLower());
    EXPECT_TRUE(s.toUpper());
    EXPECT_EQ(s, u"STRA\u00DFE \u00C4I");
    EXPECT_EQ(copy, u"Stra\u00DFe \u00C4\u0130");
    const struct {
        const char* before;
        const char* after;
    } rows[] = {{"hello WORLD,again", "Hello World,Again"},
                {"a.b;c-d", "A.B;C-d"},
                {"Done", "Done"},
                {"", ""}};
    for (const auto& row : rows) {
        String mixed(row.before);
        EXPECT_EQ(mixed.toMixed(), String(row.before) != row.after);
        EXPECT_EQ(mixed, row.after);
    }
}

TEST(StringComforts, WorkWithTheStandardLibrary) {
    EXPECT_EQ(fromUtf8("\xC3\xA9\xF0\x9F\x98\x80"), u"\u00E9\U0001F600");
    EXPECT_EQ(fromUtf8("\xC0\x80\xED\xA0\x80x\xE2\x82"),
              u"\xFFFD\xFFFD\xFFFD\xFFFD\xFFFDx\xFFFD\xFFFD");
    EXPECT_EQ(toUtf8(text(u"\u20AC\U0001F600\xD800")), "\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBD");
    EXPECT_EQ(toUtf16(fromUtf16(u"a\xDC00")), u"a\xDC00");
    const std::unordered_set<String> set{"one", "two", "one"};
    EXPECT_EQ(set.size(), 2U);
    EXPECT_EQ(set.count("two"), 1U);
    String moved("text");
    EXPECT_EQ("<" + String(std::move(moved)) + u'>', "<text>");
}

} // namespace
