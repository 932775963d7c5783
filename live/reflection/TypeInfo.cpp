#include <krcore/live/TypeInfo.h>

#include "live/reflection/DescriptorText.h"

#include <krcore/text/String.h>
#include <krcore/values/Variant.h>

#include <limits>
#include <utility>

namespace KrCore {

TypeInfo::~TypeInfo() = default;

bool TypeInfo::getDataTypeAsString(String& text) const {
    if (!getDataClass(text)) text = convertDataTypeToString(getDataType());
    return true;
}

bool TypeInfo::getDataClass(String& className) const {
    className.erase();
    return false;
}

bool TypeInfo::isCollection() const { return false; }

bool TypeInfo::getValidRange(double& minimum, double& maximum) const {
    minimum = maximum = std::numeric_limits<double>::infinity();
    return false;
}

bool TypeInfo::getDefaultValue(Variant& value) const {
    value.erase();
    return false;
}

bool TypeInfo::getDescription(String& text) const {
    text.erase();
    return false;
}

const char* TypeInfo::convertDataTypeToString(VariantType type) {
    static constexpr const char* names[] = {"undefined", "null",   "boolean",  "number", "string",
                                            "Object",    "Object", "point",    "rect",   "array",
                                            "filespec",  "regexp", "unitvalue"};
    constexpr int nameCount = sizeof names / sizeof *names;
    if (type == anyType) return "any";
    const int index = static_cast<int>(type);
    return index >= 0 && index < nameCount ? names[index] : "unknown";
}

TypeInfo* TypeInfo::parse(const String& text, int index, String* name, String* shortDesc,
                          String* longDesc, TypeInfo** second) {
    DescribedField field = DescribedField::read(UnitSpan(text), index);
    if (name) *name = std::move(field.name);
    if (shortDesc) *shortDesc = std::move(field.shortDescription);
    if (longDesc) *longDesc = std::move(field.longDescription);
    if (second) *second = field.secondType.release();
    return field.type.release();
}

} // namespace KrCore
