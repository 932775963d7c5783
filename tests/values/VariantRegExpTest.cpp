#include <krcore/containers/Array.h>
#include <krcore/regexp/RegExp.h>
#include <krcore/text/StringConversions.h>
#include <krcore/values/Variant.h>

#include "support/FailingAllocator.h"

#include <gtest/gtest.h>

#include <utility>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

TEST(VariantRegExp, KeepsItsOwnHandleOfAnExpression) {
    Variant value;
    {
        const RegExp expression("a(b)", 2 | 1 << 16);
        value = expression;
        Variant copy(value);
        const Variant moved(std::move(copy));
        value = moved;
    }
    ASSERT_EQ(value.getType(), VariantType::RegExp);
    const RegExp& held = *value.getRegExp();
    EXPECT_EQ(held.getPattern(), "a(b)");
    EXPECT_EQ(held.getFlags(), 2 | 1 << 16);
    EXPECT_EQ(held.getCaptureLength(), 2);
    value.setRegExp(held); // its own content
    EXPECT_EQ(value.getRegExp()->getPattern(), "a(b)");
    value = 1;
    EXPECT_EQ(value.getRegExp(), nullptr);
    EXPECT_EQ(Variant("a(b)").getRegExp(), nullptr);
}

TEST(VariantRegExp, IsItsPatternAsText) {
    EXPECT_EQ(Variant(RegExp("a/\\d", 2)).getString(), "a/\\d");
    EXPECT_EQ(Variant(RegExp("(", 0)).getString(), "(") << "compiled or not";
    EXPECT_EQ(Variant(RegExp()).getString(), "(?:)");
}

TEST(VariantRegExp, IsTrueForOnePatternOnly) {
    EXPECT_TRUE(Variant(RegExp("true", 2)).getBool());
    for (const char* pattern : {"", "True", "true ", "a", "1"})
        EXPECT_FALSE(Variant(RegExp(pattern, 0)).getBool()) << pattern;
}

TEST(VariantRegExp, ComparesByPattern) {
    const Variant a(RegExp("a", 0));
    EXPECT_EQ(a, Variant(RegExp("a", 6))) << "flags do not count";
    EXPECT_LT(a.compare(Variant(RegExp("b", 0))), 0);
    EXPECT_GT(Variant(RegExp("b", 0)).compare(a), 0);
    EXPECT_EQ(a, Variant("a")) << "beside other kinds as text";
    EXPECT_LT(Variant().compare(a), 0);
}

TEST(VariantRegExp, ConvertsToOtherKindsButNotFromThem) {
    Variant value(RegExp("true", 0));
    EXPECT_EQ(value.convert(VariantType::RegExp), 0);
    Variant list(value);
    EXPECT_EQ(list.convert(VariantType::Array), 0);
    EXPECT_NE(list.getArray()->safeGet(0).getRegExp(), nullptr);
    Variant truth(value);
    EXPECT_EQ(truth.convert(VariantType::Bool), 0);
    EXPECT_TRUE(truth.getBool());
    EXPECT_EQ(value.convert(VariantType::String), 0);
    EXPECT_EQ(value.getString(), "true");
    EXPECT_NE(value.convert(VariantType::RegExp), 0);
    EXPECT_EQ(value.getType(), VariantType::String) << "stays";
}

TEST(VariantRegExp, StaysAsItWasWhenMemoryRunsOut) {
    const RegExp expression("a", 0);
    forEachFailure([&] {
        Variant value("text long enough to have a block of its own");
        try {
            value = expression;
        } catch (const OutOfMemory&) {
            EXPECT_EQ(value.getType(), VariantType::String);
            throw;
        }
        const Variant copy(value);
        EXPECT_EQ(copy.getString(), "a");
    });
}

} // namespace
