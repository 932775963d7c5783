#include <krcore/containers/Array.h>
#include <krcore/containers/THashTable.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/live/LiveObject.h>
#include <krcore/text/String.h>
#include <krcore/values/Error.h>
#include <krcore/values/Point.h>
#include <krcore/values/Rect.h>
#include <krcore/values/UnitValue.h>
#include <krcore/values/Variant.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using namespace KrCore;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

std::string textOf(const Variant& value) {
    const String& text = value.getString();
    return {text.begin(), text.end()};
}

Variant arrayOf(std::initializer_list<Variant> elements) {
    Array array;
    for (const Variant& element : elements)
        array += element;
    return Variant(array);
}

/// Gives another value as its own and counts the questions.
class Thing : public LiveObject {
public:
    explicit Thing(const Variant& value) : LiveObject("Thing", false), value_(value) {}
    int valueOf(Variant& result) const override {
        ++questions;
        result = value_;
        return 0;
    }
    void setValue(const Variant& value) { value_ = value; }
    mutable int questions = 0;

private:
    Variant value_;
};

/// Puts an own value into a variant whenever it is asked for anything.
class Meddler : public LiveObject {
public:
    explicit Meddler(Variant& victim) : LiveObject("Meddler", false), victim_(victim) {}
    int valueOf(Variant& result) const override {
        victim_ = 5;
        result = 1;
        return 0;
    }
    int toString(String& text) const override {
        victim_ = 5;
        text = victim_.getString() + " was put";
        return 0;
    }

private:
    Variant& victim_;
};

} // namespace

TEST(VariantConvert, GivesNumbersByTheScriptRules) {
    const struct {
        Variant value;
        double number;
    } rows[] = {{Variant(), notANumber},
                {Variant(static_cast<LiveObject*>(nullptr)), 0},
                {true, 1},
                {" 12 pt", 12},
                {"12pt", notANumber},
                {"", 0},
                {Point(1, 2), notANumber},
                {Rect(), notANumber},
                {arrayOf({5}), notANumber},
                {UnitValue(2.5, "cm"), 2.5},
                {Variant(77, "Thing", nullptr), 77}};
    for (const auto& row : rows) {
        SCOPED_TRACE(textOf(row.value));
        const double number = row.value.getDouble();
        EXPECT_TRUE(number == row.number || (std::isnan(number) && std::isnan(row.number)));
    }
}

TEST(VariantConvert, TakesOnlyTheTextTrueForTrue) {
    const struct {
        Variant value;
        bool truth;
    } rows[] = {{Variant(), false},
                {Variant(static_cast<LiveObject*>(nullptr)), false},
                {"false", true},
                {"", false},
                {-0.0, false},
                {notANumber, false},
                {infinity, true},
                {Point(1, 1), false},
                {arrayOf({true}), false},
                {UnitValue(0, "cm"), false},
                {UnitValue(1, ""), true}};
    for (const auto& row : rows)
        EXPECT_EQ(row.value.getBool(), row.truth) << textOf(row.value);
}

TEST(VariantConvert, KeepsIntegersWithinTheirRange) {
    const struct {
        Variant value;
        int integer;
        unsigned int natural;
    } rows[] = {{2.9, 2, 2},
                {-2.9, -2, 0},
                {notANumber, 0, 0},
                {3e9, 2147483647, 3000000000u},
                {1e300, 2147483647, 4294967295u},
                {-infinity, -2147483647 - 1, 0},
                {"0x7F", 127, 127}};
    for (const auto& row : rows) {
        EXPECT_EQ(row.value.getInteger(), row.integer) << textOf(row.value);
        EXPECT_EQ(row.value.getUInteger(), row.natural) << textOf(row.value);
    }
    EXPECT_EQ(Variant(50).getInteger(1, 10), 10);
    EXPECT_EQ(Variant(-50).getInteger(1, 10), 1);
}

TEST(VariantConvert, ChangesTheKindInPlace) {
    const Variant values[] = {Variant(),     Variant(7),       Variant("text"),
                              Point(1.5, 2), Rect(1, 2, 3, 4), arrayOf({"7", 8.9})};
    const struct {
        VariantType type;
        const char* texts[6];
    } rows[] = {
        {VariantType::Undefined,
         {"undefined", "undefined", "undefined", "undefined", "undefined", "undefined"}},
        {VariantType::Null, {"null", "null", "null", "null", "null", "null"}},
        {VariantType::Bool, {"false", "true", "true", "false", "false", "false"}},
        {VariantType::Number, {"NaN", "7", "NaN", "NaN", "NaN", "NaN"}},
        {VariantType::String, {"undefined", "7", "text", "1:2", "1:2-3:4", "[7,8.9]"}},
        {VariantType::Point, {"0:0", "0:0", "0:0", "1:2", "0:0", "7:8"}},
        {VariantType::Rect, {"0:0-0:0", "0:0-0:0", "0:0-0:0", "0:0-0:0", "1:2-3:4", "7:8-0:0"}},
        {VariantType::Array, {"[]", "[7]", "[text]", "[1.5,2]", "[1,2,3,4]", "[7,8.9]"}}};
    for (const auto& row : rows) {
        for (int index = 0; index < 6; ++index) {
            SCOPED_TRACE(row.texts[index]);
            Variant value(values[index]);
            EXPECT_EQ(value.convert(row.type), 0);
            EXPECT_EQ(value.getType(), row.type);
            EXPECT_EQ(textOf(value), row.texts[index]);
        }
    }
    Array array;
    Variant().getArray(array);
    EXPECT_EQ(array.length(), 1u);
}

TEST(VariantConvert, RefusesKindsNothingConvertsTo) {
    for (const int type : {5, 6, 10, 11, 12, 13, -1}) {
        Variant value("text");
        EXPECT_EQ(value.convert(static_cast<VariantType>(type)), ErrorCode::CannotConvert);
        EXPECT_EQ(textOf(value), "text");
    }
    Variant unit(UnitValue(1, "m"));
    EXPECT_EQ(unit.convert(VariantType::UnitValue), 0);
}

TEST(VariantConvert, ValidatesRangeAndKind) {
    EXPECT_EQ(Variant(5).validate(5, 5), 0);
    EXPECT_EQ(Variant("5").validate(1, 10), 0);
    EXPECT_EQ(Variant(5.5).validate(1, 10), ErrorCode::TypeMismatch);
    EXPECT_EQ(Variant(5.5).validate(1.0, 10.0), 0);
    EXPECT_EQ(Variant(-1).validate(0u, 4294967295u), ErrorCode::OutOfRange);
    EXPECT_EQ(Variant(infinity).validate(1, 10), ErrorCode::OutOfRange);
    EXPECT_EQ(Variant("five").validate(1, 10), ErrorCode::TypeMismatch);
    EXPECT_EQ(Variant("five").validate(VariantType::String), 0);
    EXPECT_EQ(Variant(5).validate(VariantType::String), ErrorCode::TypeMismatch);
}

TEST(VariantCompare, OrdersAnyTwoValues) {
    constexpr int unordered = Variant::unordered;
    const Variant null(static_cast<LiveObject*>(nullptr));
    const struct {
        Variant left;
        Variant right;
        int order;
    } rows[] = {{Variant(), Variant(), 0},
                {Variant(), 5, -1},
                {5, Variant(), 1},
                {notANumber, Variant(), 1},
                {Variant(), notANumber, -1},
                {null, Variant(), 1},
                {null, null, 0},
                {null, 0, 0},
                {null, false, 0},
                {true, false, 1},
                {true, 1, 0},
                {2, "10", -1},
                {"10", 2, 1},
                {"10", "2", -1},
                {"ten", 2, unordered},
                {notANumber, notANumber, unordered},
                {notANumber, "x", unordered},
                {0, -0.0, 0},
                {1e308, -1e308, 1},
                {infinity, 1e308, 1},
                {infinity, infinity, 0},
                {-infinity, infinity, -1},
                {-infinity, -infinity, 0},
                {"abc", "abd", -1},
                {Point(1, 1), Point(2, 2), 1},
                {Point(1, 1), Point(1, 1), 0},
                {Point(1, 1), "1:1", 0},
                {Rect(1, 1, 2, 2), Rect(1, 1, 2, 2), -1},
                {arrayOf({1, 2}), "[1,2]", 0},
                {arrayOf({1, 2}), arrayOf({1, 2}), 0},
                {arrayOf({1}), 1, unordered},
                {UnitValue(1, "cm"), UnitValue(2, "cm"), -1},
                {UnitValue(1, "cm"), 1, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(textOf(row.left) + " and " + textOf(row.right));
        const int order = row.left.compare(row.right);
        const bool isPlain = row.order == 0 || row.order == unordered;
        EXPECT_EQ(isPlain ? order : (order > 0 ? 1 : -1), row.order);
        EXPECT_EQ(row.left == row.right, row.order == 0);
        EXPECT_EQ(row.left != row.right, row.order != 0);
        EXPECT_EQ(row.left < row.right, row.order < 0);
    }
}

TEST(VariantLiveObject, CountsReferencesAndKeepsTheInfo) {
    auto* thing = new Thing(5);
    {
        Variant value(thing, 42);
        EXPECT_EQ(thing->getRefCount(), 2);
        Variant copy(value);
        EXPECT_EQ(thing->getRefCount(), 3);
        EXPECT_EQ(copy.getLiveObjectInfo(), 42);
        value = std::move(copy);
        EXPECT_EQ(thing->getRefCount(), 2);
        value.setLiveObject(*value.getLiveObject(), 1);
        EXPECT_EQ(thing->getRefCount(), 2);
        EXPECT_EQ(value.getLiveObjectInfo(), 1);
        EXPECT_EQ(value.getDouble(), 5);
        EXPECT_TRUE(value.getBool());
        EXPECT_EQ(textOf(value), "[object Thing]");
        EXPECT_TRUE(value.isValidObject());
        thing->invalidate();
        EXPECT_FALSE(value.isValidObject());
        EXPECT_EQ(textOf(value), "");
    }
    EXPECT_EQ(thing->getRefCount(), 1);
    thing->release();
}

TEST(VariantLiveObject, SurvivesObjectsThatChangeTheirVariant) {
    Variant value;
    auto* meddler = new Meddler(value);
    value = arrayOf({meddler, meddler, meddler, meddler});
    EXPECT_EQ(value.convert(VariantType::Rect), 0);
    EXPECT_EQ(textOf(value), "1:1-1:1");
    value = meddler;
    EXPECT_EQ(textOf(value), "5") << "the text is that of the value it has now";
    EXPECT_EQ(textOf(value), "5");
    meddler->release();
}

TEST(VariantLiveObject, FollowsValuesForSixteenSteps) {
    auto* thing = new Thing(Variant());
    thing->setValue(Variant(thing));
    EXPECT_TRUE(std::isnan(Variant(thing).getDouble()));
    EXPECT_EQ(thing->questions, 16);
    auto* other = new Thing(Variant(thing));
    thing->setValue("0x10");
    EXPECT_EQ(Variant(other).getDouble(), 16);
    other->release();
    thing->release();
}

TEST(VariantLiveObject, CopiesPropertiesToATableAndBack) {
    auto* source = new LiveObject("Source", true);
    auto* target = new LiveObject("Target", true);
    EXPECT_EQ(source->put("first", 1, 0, nullptr), 0);
    EXPECT_EQ(source->put("second", "two", 0, nullptr), 0);
    Variant known(99);
    THashTable<Variant> table;
    table.set("first", &known);
    EXPECT_EQ(Variant(source).getObjectProperties(table, RequestFlag::ReadWrite, nullptr), 0);
    EXPECT_EQ(known.getInteger(), 1) << "values that the table has are overwritten";
    EXPECT_EQ(Variant(target).setObjectProperties(table, nullptr), 0);
    delete table.remove("second");

    Variant value;
    EXPECT_EQ(target->get("second", value, nullptr), 0);
    EXPECT_EQ(textOf(value), "two");
    Error error;
    EXPECT_EQ(Variant(5).setObjectProperties(table, &error), ErrorCode::NotAnObject);
    EXPECT_EQ(error.getCode(), ErrorCode::NotAnObject);
    target->release();
    source->release();
}
