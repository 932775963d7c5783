#pragma once

#include "live/reflection/UnitSpan.h"

#include <krcore/live/TypeInfo.h>
#include <krcore/values/Variant.h>

#include <limits>

namespace KrCore {

/// The type that one part of a descriptor text spells: type ";" minimum ";" maximum ";" default
/// ";" array marker.
class SimpleTypeInfo : public TypeInfo {
public:
    explicit SimpleTypeInfo(UnitSpan text);
    ~SimpleTypeInfo() override;

    VariantType getDataType() const override { return type_; }
    bool getDataClass(String& className) const override;
    bool isCollection() const override { return isCollection_; }
    bool getValidRange(double& minimum, double& maximum) const override;
    bool getDefaultValue(Variant& value) const override;

private:
    void readType(UnitSpan name);
    double readBound(UnitSpan text);
    void readDefault(UnitSpan text);

    VariantType type_ = anyType;
    String dataClass_;
    double minimum_ = std::numeric_limits<double>::infinity();
    double maximum_ = std::numeric_limits<double>::infinity();
    Variant default_;
    bool hasRange_ = false;
    bool hasDefault_ = false;
    bool isCollection_ = false;
};

} // namespace KrCore
