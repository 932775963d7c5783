#include <krcore/containers/Array.h>
#include <krcore/text/String.h>
#include <krcore/values/Rect.h>
#include <krcore/values/Variant.h>

#include <gtest/gtest.h>

using namespace KrCore;

namespace {

String textOf(const BasicArray& array) {
    String text;
    array.toString(text);
    return text;
}

/// An array class of a host, as long as it likes, that answers every index with its own text.
class Mirror : public BasicArray {
public:
    explicit Mirror(const Variant& element) : element_(element) {}
    unsigned int length() const override { return 0xFFFFFFFFU; }
    bool isDefined(unsigned int) const override { return true; }
    Variant* get(unsigned int) const override { return &element_; }

private:
    mutable Variant element_;
};

} // namespace

TEST(ArrayText, JoinsElementsByCommas) {
    Array inner;
    inner += 1;
    inner += Array();
    inner += Rect(1, 2, 3, 4);
    Array array(2);
    array[1].setNull();
    array += "a,b";
    array += Variant(inner);
    array += true;
    array += 0.5;
    EXPECT_TRUE(textOf(array) == ",,a,b,[1,[],1:2-3:4],true,0.5");
    EXPECT_TRUE(textOf(Array()) == "");
    EXPECT_TRUE(textOf(Array(1)) == "");
}

TEST(ArrayText, StopsAtItsLimit) {
    const String endless = textOf(Array(4000000000U));
    EXPECT_EQ(endless.length(), 65536 + 19);
    EXPECT_TRUE(endless.substr(65535) == ",[too many elements]");
    EXPECT_EQ(textOf(Mirror(Variant("x"))).length(), 2 * 65536 + 19);

    Array doubled;
    doubled += "x";
    for (int times = 0; times < 60; ++times) {
        Array next;
        next += Variant(doubled);
        next += Variant(doubled);
        doubled = next;
    }
    EXPECT_LT(textOf(doubled).length(), 500000);
    EXPECT_TRUE(doubled == Array(doubled));
}

TEST(ArrayLiteral, ReadsValuesAndHoles) {
    const struct {
        const char* literal;
        unsigned int length;
        const char* text;
    } rows[] = {
        {"[]", 0, ""},
        {" [ 1 , -2.5e1,0x10 ] ", 3, "1,-25,16"},
        {"[1,,3,]", 3, "1,,3"},
        {"[,]", 1, ""},
        {"['a\\n]',\"b'\",'']", 3, "a\n],b',"},
        {"[null, true,false , undefined,NaN,-Infinity]", 6, ",true,false,,NaN,-Infinity"},
        {"[[1,[2]],[]]", 2, "[1,[2]],[]"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.literal);
        Array array(7);
        EXPECT_TRUE(array.parse(row.literal, 0));
        EXPECT_EQ(array.length(), row.length);
        EXPECT_TRUE(textOf(array) == row.text);
    }
    Array array;
    EXPECT_TRUE(array.parse("a = [5]", 3));
    EXPECT_TRUE(array.parse("[[4]]", -1));
}

TEST(ArrayLiteral, RefusesEverythingElse) {
    for (const char* literal : {"", "1", "[", "[1", "[1,", "[1]]", "[1] x", "[1 2]", "['a]", "[a]",
                                "[{}]", "[1;2]", "['a' 'b']", "['\\xZZ']", "[[1]", "[tru]"}) {
        SCOPED_TRACE(literal);
        Array array;
        array += 5;
        EXPECT_FALSE(array.parse(literal, 0));
        EXPECT_TRUE(textOf(array) == "5");
    }
    const auto nested = [](int depth) {
        String text;
        text.setup('[', depth);
        String closing;
        closing.setup(']', depth);
        return text + closing;
    };
    Array array;
    EXPECT_TRUE(array.parse(nested(512), 0));
    EXPECT_FALSE(array.parse(nested(513), 0));
    EXPECT_FALSE(array.parse(nested(200000), 0));
}

TEST(BasicArray, CanBeWalked) {
    Array array(3);
    array[0] = 1;
    array[2] = 3;
    int sum = 0, holes = 0;
    for (const Variant& element : array) {
        sum = sum * 10 + (element.isDefined() ? element.getInteger() : 0);
        holes += !element.isDefined();
    }
    EXPECT_EQ(sum, 103);
    EXPECT_EQ(holes, 1);
    EXPECT_TRUE(static_cast<const Array&>(array)[99].getString() == "undefined");
}
