#include "live/LiveFixture.h"

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

std::string textOf(const LiveBase& object, int id, bool raw = false, int expectedCode = 0) {
    String text;
    EXPECT_EQ(object.getPropertyText(text, id, raw), expectedCode);
    return narrow(text);
}

TEST(LiveBaseText, NamesWhatHasNoName) {
    const auto thing = makePlain("Thing");
    const struct {
        int id;
        const char* text;
    } rows[] = {{7, "{LiveObject(\"Thing\").property(7)}"},
                {-9999, "{LiveObject(\"Thing\").property(-9999)}"},
                {10000, "{LiveObject(\"Thing\").property(0x00002710)}"},
                {100000, "{LiveObject(\"Thing\").property(0x000186a0)}"},
                {0x61626364, "{LiveObject(\"Thing\").property('abcd')}"},
                {0x20202020, "{LiveObject(\"Thing\").property('    ')}"},
                {0x1FF10113, "{LiveObject(\"Thing\").property(0x1ff10113)}"}};
    for (const auto& row : rows)
        EXPECT_EQ(textOf(*thing, row.id, false, 2), row.text);
}

TEST(LiveBaseText, PrintsIndexesRaw) {
    EXPECT_EQ(textOf(*makePlain(), 41, true), "[41l]");
    EXPECT_EQ(textOf(*makePlain(), 65536, true), "[0l]");
}

TEST(LiveBaseText, NamesOperators) {
    const auto thing = makePlain("Thing");
    const char* names[] = {"~", "!",  "*",  "/",          "%",  "+",   "-", "<<", ">>", "<<<",
                           "<", "<=", "in", "instanceof", "==", "===", "&", "|",  "^"};
    int id = 0x1FF10100;
    for (const char* name : names)
        EXPECT_EQ(textOf(*thing, id++), "operator \"" + std::string(name) + "\"()");
    EXPECT_EQ(id, 0x1FF10113);
}

TEST(LiveBaseText, UsesNamesAndClassNames) {
    const auto shape = make<Shape>();
    EXPECT_EQ(textOf(*shape, Shape::Width), "width");
    EXPECT_EQ(textOf(*shape, 0x1FF10000), "Shape()");
    EXPECT_EQ(textOf(*makePlain(""), 0x1FF10000), "Object()");
    EXPECT_EQ(textOf(*make<Gadget>(), 0x1FF10000), "LiveObject()");
}

TEST(LiveBaseText, PutsArgumentsIntoMessagesVerbatim) {
    const auto thing = makePlain("Thing");
    String text;
    const String argument = "%1 ^";
    EXPECT_EQ(thing->getErrorText(text, 2, &argument), 0);
    EXPECT_EQ(narrow(text), "%1 ^ is undefined");
    text = "me";
    thing->getErrorText(text, 2, &text);
    EXPECT_EQ(narrow(text), "me is undefined");
    EXPECT_EQ(thing->getErrorText(text, 2, 7, false), 2);
    EXPECT_EQ(narrow(text), "{LiveObject(\"Thing\").property(7)} is undefined");
}

} // namespace
