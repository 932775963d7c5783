// Lengths beyond the limit and memory that runs out.

#include "support/FailingAllocator.h"
#include "support/TextSupport.h"

#include <krcore/text/Encoder.h>

#include <climits>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(StringLimit, RefusesWhatNoBufferCanHold) {
    String s("kept");
    EXPECT_THROW(s.init(INT_MAX), OutOfMemory);
    EXPECT_THROW(s.adjust(String::maxLength + 1), OutOfMemory);
    EXPECT_THROW(s.setup('x', INT_MAX), OutOfMemory);
    EXPECT_THROW(s.append("x", INT_MAX), OutOfMemory);
    EXPECT_THROW(String(s.wstr(), INT_MAX), OutOfMemory);
    const unsigned int wide[] = {'x', 0};
    EXPECT_THROW(String(wide, INT_MAX), OutOfMemory);
    EXPECT_EQ(s, "kept");
}

TEST(StringLimit, RefusesGrowthBeyondIt) {
    String s, with;
    s.setup('\n', 1 << 20);
    with.setup('x', 1024);
    EXPECT_THROW(s.replaceAll("\n", with), OutOfMemory) << "one unit too long";
    with.setup('x', 1 << 20);
    EXPECT_THROW(s.replaceAll("\n", with), OutOfMemory);
    EXPECT_EQ(s.length(), 1 << 20);
    EXPECT_EQ(s.find('x'), -1);
}

/// Builds, changes, converts and copies; its text is complete at every step.
void useStrings() {
    String s("a text that is longer than one small buffer");
    const String copy(s);
    s.append(" and grows");
    EXPECT_EQ(copy, "a text that is longer than one small buffer");
    s.insert(u"\u20AC", 3);
    EXPECT_EQ(s.replaceAll("t", "<t>"), 5);
    EXPECT_EQ(s.replaceAll("<t>", "T"), 5);
    String field = s.split("is");
    EXPECT_TRUE(field.toUpper());
    String marked(field);
    marked.makeUnique();
    const String unshared(marked);
    marked.print("%s %d %ls", "formatted", 42, unshared.wstr());
    EXPECT_TRUE(marked.encodeURI("/"));
    EXPECT_TRUE(marked.decodeURI());
    String parsed;
    EXPECT_TRUE(marked.escape(true).parse(parsed));
    EXPECT_EQ(parsed, marked);
    parsed.append("\r\n");
    EXPECT_EQ(parsed.convertLF(CRLFEncoding::LF), 1);
    EXPECT_EQ(field + "!" + copy.substr(2, 4), text(u"A T\u20ACEXT THAT!text"));
}

TEST(StringMemory, IsWholeAndGivenBackWhenAnyRequestFails) {
    useStrings();
    forEachFailure(useStrings);
    forEachFailure(useStrings, Shortage::Lasting);
    forEachFailure(useStrings, Shortage::UntilFlush);
}

/// Runs one change with each of its requests refused and expects the text as it was, or changed.
template <class Change>
void expectAllOrNothing(const char* before, const char* after, Change change) {
    for (const bool isShared : {false, true}) {
        for (int allowed = 0; allowed < 10; ++allowed) {
            String s(before);
            const String sharer = isShared ? s : String();
            bool isChanged = true;
            try {
                const FailingScope shortOfMemory(allowed, Shortage::Lasting);
                change(s);
            } catch (const OutOfMemory&) {
                isChanged = false;
            }
            EXPECT_EQ(s, isChanged ? after : before) << after << " " << allowed;
        }
    }
}

TEST(StringMemory, ChangesAllOrNothing) {
    expectAllOrNothing("0123456789abcde", "0123456789abcdef", [](String& s) { s.append('f'); });
    expectAllOrNothing("0123456789abcde", "0>>>123456789abcde",
                       [](String& s) { s.insert(">>>", 1); });
    expectAllOrNothing("a-b", "a<------------->b",
                       [](String& s) { s.replace("-", "<------------->"); });
    expectAllOrNothing(" ab, c", " c", [](String& s) { s.split(","); });
    expectAllOrNothing(" ab ", "ab", [](String& s) { s.strip(); });
    expectAllOrNothing("a-b-c", "a--b--c", [](String& s) { s.replaceAll("-", "--"); });
    expectAllOrNothing("a-b-c", "a+b+c", [](String& s) { s.replaceAll('-', '+'); });
    expectAllOrNothing("hello you", "Hello You", [](String& s) { s.toMixed(); });
    expectAllOrNothing("a\nb", "a\r\nb", [](String& s) { s.convertLF(CRLFEncoding::CRLF); });
    expectAllOrNothing("a b", "a%20b", [](String& s) { s.encodeURI(""); });
    expectAllOrNothing("old", "   7", [](String& s) { s.print("%4d", 7); });
}

TEST(StringMemory, ShrinksWithoutNeedingMemory) {
    String s;
    s.setup('x', 10000);
    const FailingScope shortOfMemory(0, Shortage::Lasting);
    s.erase(10);
    EXPECT_EQ(s, "xxxxxxxxxx");
    s.erase(3, 7);
    EXPECT_EQ(s, "xxx");
}

} // namespace
