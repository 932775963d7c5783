#include "live/reflection/SimpleTypeInfo.h"

#include <krcore/text/UnicodeUtils.h>

namespace KrCore {

namespace {

struct TypeName {
    const char* name;
    VariantType type;
};

constexpr TypeName typeNames[] = {
    {"undefined", VariantType::Undefined}, {"boolean", VariantType::Bool},
    {"bool", VariantType::Bool},           {"number", VariantType::Number},
    {"int", VariantType::Number},          {"uint", VariantType::Number},
    {"string", VariantType::String},       {"object", VariantType::Object},
    {"Object", VariantType::Object},       {"any", anyType},
};

// What may follow a number makes it NaN.
constexpr int nothingBehind = 0;

double numberIn(UnitSpan text) { return Variant::scanDouble(text.toString(), nothingBehind); }

bool startsNumber(unsigned short unit) {
    return (unit >= '0' && unit <= '9') || unit == '-' || unit == '+';
}

} // namespace

SimpleTypeInfo::SimpleTypeInfo(UnitSpan text) {
    readType(text.split(';').stripped());
    minimum_ = readBound(text.split(';').stripped());
    maximum_ = readBound(text.split(';').stripped());
    readDefault(text.split(';').stripped());
    isCollection_ = !text.split(';').stripped().isEmpty();
}

SimpleTypeInfo::~SimpleTypeInfo() = default;

void SimpleTypeInfo::readType(UnitSpan name) {
    for (const TypeName& known : typeNames) {
        if (name == known.name) {
            type_ = known.type;
            return;
        }
    }
    if (name.isEmpty() || !UnicodeUtils::iswupper(name[0])) return;
    type_ = VariantType::Object;
    dataClass_ = name.toString();
}

double SimpleTypeInfo::readBound(UnitSpan text) {
    if (text.isEmpty()) return std::numeric_limits<double>::infinity();
    hasRange_ = true;
    return numberIn(text);
}

void SimpleTypeInfo::readDefault(UnitSpan text) {
    hasDefault_ = !text.isEmpty();
    if (!hasDefault_ || text == "undefined") return;
    if (text == "null") {
        default_.setNull();
    } else if (text == "false" || text == "true") {
        default_ = text == "true";
    } else if (startsNumber(text[0])) {
        default_ = numberIn(text);
    } else {
        default_ = text.toString();
    }
}

bool SimpleTypeInfo::getDataClass(String& className) const {
    className = dataClass_;
    return !dataClass_.isEmpty();
}

bool SimpleTypeInfo::getValidRange(double& minimum, double& maximum) const {
    minimum = minimum_;
    maximum = maximum_;
    return hasRange_;
}

bool SimpleTypeInfo::getDefaultValue(Variant& value) const {
    value = default_;
    return hasDefault_;
}

} // namespace KrCore
