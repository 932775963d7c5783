#include "live/LiveFixture.h"

#include <krcore/text/StringConversions.h>

#include <cmath>
#include <limits>
#include <optional>

using namespace KrCore;
using namespace KrCore::Testing;

namespace {

constexpr double none = std::numeric_limits<double>::infinity();

/// What a descriptor text says in one place, written as one line.
std::string read(const char* descriptor, int index) {
    String name, shortText, longText, typeName;
    TypeInfo* second = nullptr;
    const std::unique_ptr<TypeInfo> type(
        TypeInfo::parse(descriptor, index, &name, &shortText, &longText, &second));
    const std::unique_ptr<TypeInfo> owned(second);
    type->getDataTypeAsString(typeName);
    std::string line = narrow(name) + ":" + narrow(typeName);
    if (type->isCollection()) line += "[]";
    if (second) {
        second->getDataTypeAsString(typeName);
        line += "/" + narrow(typeName);
    }
    if (!shortText.isEmpty()) line += " | " + narrow(shortText);
    if (!longText.isEmpty()) line += " | " + narrow(longText);
    return line;
}

TEST(Descriptor, ListsATypeAndParameters) {
    const struct {
        const char* text;
        int index;
        const char* expected;
    } cases[] = {
        {"", -1, ":any"},
        {"", 0, "arg1:any"},
        {"number", -1, ":number"},
        {" number ;;;;array\t short \t long\tmore", -1, ":number[] | short | long"},
        {"number\t\tlong only", -1, ":number | long only"},
        {"number / string", -1, ":number/string"},
        {"number/\tshort", -1, ":number | short"},
        {"number/a/b", -1, ":number/any"},
        {"undefined, a : string, Box", 0, "a:string"},
        {"undefined, a : string, Box", 1, "arg2:Box"},
        {"undefined, a : string, Box", 2, "arg3:any"},
        {"number,:int", 0, "arg1:number"},
        {"number,a:b:c", 0, "a:any"},
        // A ":" anywhere in the first field makes it a parameter.
        {"a:number\tfirst,b:string", -1, ":any"},
        {"a:number\tfirst,b:string", 0, "a:number | first"},
        {"a:number\tfirst,b:string", 1, "b:string"},
        {"number\tat 12:30", -1, ":any"},
        {"number\tat 12:30", 0, "arg1:number | at 12:30"},
        {"number", std::numeric_limits<int>::max(), "arg2147483648:any"},
        {"number", -7, ":number"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(read(row.text, row.index), row.expected) << row.text << " at " << row.index;
}

TEST(Descriptor, NamesTypes) {
    const struct {
        const char* name;
        VariantType type;
        const char* text;
    } cases[] = {
        {"undefined", VariantType::Undefined, "undefined"},
        {"boolean", VariantType::Bool, "boolean"},
        {"bool", VariantType::Bool, "boolean"},
        {"number", VariantType::Number, "number"},
        {"int", VariantType::Number, "number"},
        {"uint", VariantType::Number, "number"},
        {"string", VariantType::String, "string"},
        {"object", VariantType::Object, "Object"},
        {"Object", VariantType::Object, "Object"},
        {"any", anyType, "any"},
        {"Number", VariantType::Object, "Number"},
        {"\xC4pfel", VariantType::Object, "\xC4pfel"},
        {"null", anyType, "any"},
        {"_Private", anyType, "any"},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        const std::unique_ptr<TypeInfo> type(
            TypeInfo::parse(row.name, -1, nullptr, nullptr, nullptr, nullptr));
        String text;
        type->getDataTypeAsString(text);
        EXPECT_EQ(type->getDataType(), row.type);
        EXPECT_TRUE(text == row.text);
        const bool isClass = row.type == VariantType::Object && narrow(text) != "Object";
        EXPECT_EQ(type->getDataClass(text), isClass);
    }
    const struct {
        int type;
        std::string text;
    } names[] = {{0, "undefined"}, {6, "Object"},   {12, "unitvalue"},
                 {126, "any"},     {13, "unknown"}, {-1, "unknown"}};
    for (const auto& row : names)
        EXPECT_EQ(TypeInfo::convertDataTypeToString(static_cast<VariantType>(row.type)), row.text);
}

TEST(Descriptor, GivesRangesAndDefaults) {
    const double notANumber = std::nan("");
    const struct {
        const char* text;
        std::optional<std::pair<double, double>> range;
        std::optional<Variant> value;
    } cases[] = {
        {"number", {}, {}},
        {"number;1;", {{1, none}}, {}},
        {"number; ; -2.5e3", {{none, -2500}}, {}},
        {"number;x;1e999", {{notANumber, none}}, {}},
        {"number;;;42", {}, 42},
        {"number;;;-0x", {}, notANumber},
        {"string;;;A42", {}, "A42"},
        {"string;;;a b", {}, "a b"},
        {"bool;;;true", {}, true},
        {"bool;;;false", {}, false},
        {"any;;;undefined", {}, Variant()},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.text);
        const std::unique_ptr<TypeInfo> type(
            TypeInfo::parse(row.text, -1, nullptr, nullptr, nullptr, nullptr));
        double minimum = 7, maximum = 7;
        Variant value = "before";
        EXPECT_EQ(type->getValidRange(minimum, maximum), row.range.has_value());
        const auto [low, high] = row.range.value_or(std::pair(none, none));
        EXPECT_TRUE(minimum == low || (std::isnan(minimum) && std::isnan(low))) << minimum;
        EXPECT_EQ(maximum, high);
        EXPECT_EQ(type->getDefaultValue(value), row.value.has_value());
        const Variant expected = row.value.value_or(Variant());
        EXPECT_EQ(value.getType(), expected.getType());
        EXPECT_TRUE(value.getString() == expected.getString());
    }
    const std::unique_ptr<TypeInfo> null(
        TypeInfo::parse("object;;;null", -1, nullptr, nullptr, nullptr, nullptr));
    Variant value;
    EXPECT_TRUE(null->getDefaultValue(value));
    EXPECT_TRUE(value.isNull());
}

InterfacePtr<const ServiceInfo> recordOf(const char* descriptor) {
    LivePropertyManager manager;
    manager.registerProperty("method", 1, 5, descriptor);
    return InterfacePtr<const ServiceInfo>::adopt(manager.getServiceInfo("method", 0));
}

TEST(Descriptor, CountsParametersByTheirCommas) {
    const struct {
        const char* text;
        int count;
    } cases[] = {{nullptr, 0},          {"", 0},           {"number", 0},
                 {"a:number", 1},       {",", 1},          {"undefined,a:number,string", 2},
                 {"a:number,b:int", 1}, {"number\t1:1", 1}};
    for (const auto& row : cases)
        EXPECT_EQ(recordOf(row.text)->getParamCount(), row.count) << (row.text ? row.text : "null");
    const auto record = recordOf("a:number\tfirst,b:int");
    const auto first = InterfacePtr<const ParamInfo>::adopt(record->getParamInfo(0));
    ASSERT_TRUE(first);
    String text;
    EXPECT_TRUE(first->getName(text));
    EXPECT_EQ(narrow(text), "a");
    EXPECT_TRUE(first->getDescription(false, text));
    EXPECT_EQ(narrow(text), "first");
    EXPECT_EQ(record->getParamInfo(1), nullptr);
    EXPECT_EQ(record->getParamInfo(-1), nullptr);
}

TEST(Descriptor, ReadsAHundredThousandParameters) {
    std::string text = "undefined";
    for (int i = 0; i < 100000; ++i)
        text += ",int";
    const auto record = recordOf(text.c_str());
    ASSERT_EQ(record->getParamCount(), 100000);
    String name;
    for (int i = 0; i < 100000; ++i)
        InterfacePtr<const ParamInfo>::adopt(record->getParamInfo(i))->getName(name);
    EXPECT_EQ(narrow(name), "arg100000");
}

} // namespace
