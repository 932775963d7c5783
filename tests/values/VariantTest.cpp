#include <krcore/containers/Array.h>
#include <krcore/text/String.h>
#include <krcore/values/JSObject.h>
#include <krcore/values/Point.h>
#include <krcore/values/Rect.h>
#include <krcore/values/UnitValue.h>
#include <krcore/values/Variant.h>

#include "support/FailingAllocator.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

using namespace KrCore;

namespace {

std::string textOf(const Variant& value) {
    const String& text = value.getString();
    return {text.begin(), text.end()};
}

/// Object data that counts how many of its kind there are.
class Counted : public JSObject {
public:
    explicit Counted(int id) : id_(id) { ++count; }
    ~Counted() override { --count; }
    int getObjectID() const override { return id_; }
    void getClassName(String& name) const override { name = "Counted"; }
    int defaultValue(Variant& result) const override {
        result = id_ * 10;
        return 0;
    }
    int clone(Cloneable** result, bool) const override {
        *result = new Counted(id_);
        return 0;
    }
    static inline int count = 0;

private:
    int id_;
};

/// Object data that cannot be cloned.
class Plain : public Root {};

/// One value of each kind that needs no live object.
Variant makeValue(int kind) {
    Array array;
    array += 1;
    array += "two";
    const String counted("Counted");
    switch (kind) {
    case 0:
        return Variant();
    case 1:
        return Variant(static_cast<LiveObject*>(nullptr));
    case 2:
        return Variant(true);
    case 3:
        return Variant(2.5);
    case 4:
        return Variant("some text");
    case 5:
        return Variant(7, counted, new Counted(7));
    case 6:
        return Variant(Point(1.5, -2.5));
    case 7:
        return Variant(Rect(1, 2, 3, 4));
    case 8:
        return Variant(array);
    default:
        return Variant(UnitValue(12.5, "pt"));
    }
}
constexpr int kindCount = 10;
constexpr const char* texts[kindCount] = {
    "undefined",        "null", "true",    "2.5",     "some text",
    "[object Counted]", "1:-2", "1:2-3:4", "[1,two]", "12.5 pt"};

template <class T>
concept Accepted = requires(T value) {
    Variant(value);
};
template <class T>
concept Assignable = requires(Variant variant, T value) {
    variant = value;
};
template <class T>
constexpr bool isTaken = Accepted<T>&& Assignable<T>;
template <class T>
constexpr bool isRefused = !Accepted<T> && !Assignable<T>;

} // namespace

static_assert(isTaken<bool> && isTaken<double> && isTaken<float> && isTaken<short> &&
              isTaken<unsigned short> && isTaken<std::int64_t> && isTaken<std::uint64_t> &&
              isTaken<std::size_t> && isTaken<signed char> && isTaken<unsigned char>);
static_assert(isTaken<const char*> && isTaken<char*> && isTaken<const unsigned short*> &&
              isTaken<const char16_t*> && isTaken<Variant*> && isTaken<LiveObject*>);
static_assert(isRefused<void*> && isRefused<const wchar_t*> && isRefused<int*> &&
              isRefused<const char32_t*> && isRefused<Point*> && isRefused<void (*)()> &&
              isRefused<int Point::*> && isRefused<std::nullptr_t>);
static_assert(isRefused<char> && isRefused<wchar_t> && isRefused<char16_t> && isRefused<char8_t>);

TEST(Variant, TakesEveryIntegerAndText) {
    EXPECT_EQ(textOf(Variant(std::numeric_limits<std::int64_t>::min())), "-9223372036854775808");
    EXPECT_EQ(textOf(Variant(std::size_t(4294967295u))), "4294967295");
    EXPECT_EQ(textOf(Variant(u"16 bits")), "16 bits");
    EXPECT_EQ(textOf(Variant(static_cast<const char*>(nullptr))), "");
    EXPECT_FALSE(Variant(static_cast<const Variant*>(nullptr)).isDefined());
    EXPECT_TRUE(Variant(static_cast<LiveObject*>(nullptr)).isNull());
    Variant value;
    value = static_cast<unsigned short>(65);
    EXPECT_EQ(value.getType(), VariantType::Number);
    value.setJSObject(nullptr);
    EXPECT_TRUE(value.isNull());
}

TEST(Variant, CopiesDeeplyAndDeletesWhatItOwns) {
    for (int kind = 0; kind < kindCount; ++kind) {
        SCOPED_TRACE(texts[kind]);
        Variant original = makeValue(kind);
        Variant copy(original);
        EXPECT_EQ(textOf(copy), texts[kind]);
        for (int former = 0; former < kindCount; ++former) {
            Variant assigned = makeValue(former);
            assigned = original;
            EXPECT_EQ(textOf(assigned), texts[kind]);
            EXPECT_EQ(assigned.getType(), original.getType());
            Variant moved = makeValue(former);
            moved = std::move(assigned);
            EXPECT_EQ(textOf(moved), texts[kind]);
            moved = std::as_const(moved);
            EXPECT_EQ(textOf(moved), texts[kind]) << "after assignment to itself";
            moved.erase();
            EXPECT_FALSE(moved.isDefined());
        }
        original.erase();
        EXPECT_EQ(textOf(copy), texts[kind]) << "copies share nothing with the original";
    }
    EXPECT_EQ(Counted::count, 0);
}

TEST(Variant, TakesPartsOfItselfAsArguments) {
    Variant value(12.5);
    value.setString(value.getString());
    EXPECT_EQ(textOf(value), "12.5");
    value.setString(value.getString().wstr() + 1);
    EXPECT_EQ(textOf(value), "2.5");
    value = Point(1, 2);
    value.setPoint(*value.getPoint());
    EXPECT_EQ(textOf(value), "1:2");
    Array array;
    array += "inner";
    array += Variant(array);
    value = array;
    value = *value.getArray()->get(1);
    EXPECT_EQ(textOf(value), "[inner]");
    value = std::move(value.getArray()->safeGet(0));
    EXPECT_EQ(textOf(value), "inner");
    value = UnitValue(3, "cm");
    value.setUnitValue(*value.getUnitValue());
    EXPECT_EQ(textOf(value), "3 cm");
}

TEST(Variant, NeverPutsAnArrayIntoItself) {
    Variant value((Array(2)));
    value.getArray()->safeGet(0) = value;
    EXPECT_EQ(textOf(value), "[[,],]");
    Variant moved(*value.getArray());
    value.getArray()->safeGet(1) = std::move(moved);
    EXPECT_EQ(textOf(value), "[[,],[[,],]]");
}

TEST(Variant, KeepsTheDataOfAnObject) {
    Variant value;
    value.setJSObject(new Counted(3));
    EXPECT_EQ(value.getType(), VariantType::Object);
    EXPECT_EQ(value.getObjectID(), 3);
    EXPECT_EQ(value.getDouble(), 30);
    EXPECT_TRUE(value.getBool());
    EXPECT_FALSE(value.hasUnassignedObjectData());
    value.setObjectData(value.getObjectData());
    value.setObject(0, value.getObjectClassName(), value.getObjectData());
    EXPECT_EQ(Counted::count, 1);
    EXPECT_TRUE(value.hasUnassignedObjectData());
    value.setObjectID(4);
    EXPECT_NE(value.getJSObject(), nullptr) << "the ID is a field of its own";
    EXPECT_EQ(textOf(value), "[object Counted]");

    value.setObjectData(new Plain);
    EXPECT_EQ(Counted::count, 0);
    EXPECT_NE(value.getObjectData(), nullptr);
    const Variant copy(value);
    EXPECT_EQ(copy.getObjectData(), nullptr) << "data that cannot be cloned is not shared";
    EXPECT_EQ(copy.getDouble(), 4) << "without data the ID is the number";
    EXPECT_TRUE(copy.isValidObject());
    value = 1;
    value.setObjectID(9);
    EXPECT_EQ(textOf(value), "[object Object]");
}

TEST(Variant, ForgetsTheCachedTextWithTheValue) {
    Variant value(255);
    EXPECT_EQ(textOf(value), "255");
    EXPECT_EQ(&value.getString(), &value.getString());
    EXPECT_TRUE(value.getString(16) == "ff");
    EXPECT_EQ(textOf(value), "255");
    value = 0.5;
    EXPECT_EQ(textOf(value), "0.5");
    EXPECT_TRUE(value.getString(10, 0) == "0");
    EXPECT_TRUE(value.getString(99) == "NaN");
    value = Point(1, 1);
    EXPECT_EQ(textOf(value), "1:1");
    value.getPoint()->x = 3e20;
    value.getPoint()->y = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(textOf(value), "2147483647:0") << "content can change behind the cache";
}

TEST(Variant, ClassifiesNumbers) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const struct {
        double value;
        const char* answers; // finite, integer, unsigned, minus zero, NaN
    } rows[] = {{0, "yyynn"},
                {-0.0, "yyyyn"},
                {2147483647, "yyynn"},
                {2147483648.0, "ynynn"},
                {-2147483648.0, "yynnn"},
                {-2147483649.0, "ynnnn"},
                {4294967295.0, "ynynn"},
                {4294967296.0, "ynnnn"},
                {0.5, "ynnnn"},
                {infinity, "nnnnn"},
                {-infinity, "nnnnn"},
                {-std::numeric_limits<double>::quiet_NaN(), "nnnny"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        const Variant value(row.value);
        const bool answers[] = {value.isFinite(), value.isInteger(), value.isUInteger(),
                                value.isMinus0(), value.isNaN()};
        for (int question = 0; question < 5; ++question) {
            EXPECT_EQ(answers[question], row.answers[question] == 'y') << question;
        }
    }
    EXPECT_FALSE(Variant("1").isInteger());
    EXPECT_FALSE(Variant().isNaN());
}

TEST(Variant, StaysAsItWasWhenMemoryRunsOut) {
    for (int kind = 4; kind < kindCount; ++kind) {
        SCOPED_TRACE(texts[kind]);
        Testing::forEachFailure([kind] {
            const Variant source = makeValue(kind);
            Variant value(5);
            try {
                value = source;
            } catch (const OutOfMemory&) {
                EXPECT_EQ(value.getType(), VariantType::Number);
                throw;
            }
            try {
                value.convert(VariantType::Array);
            } catch (const OutOfMemory&) {
                EXPECT_EQ(value.getType(), source.getType());
                throw;
            }
            value.convert(VariantType::String);
            value = Variant(value);
            value.setObjectData(new Plain);
        });
    }
    EXPECT_EQ(Counted::count, 0);
}
