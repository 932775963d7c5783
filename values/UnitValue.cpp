#include <krcore/values/UnitValue.h>

#include "values/NumberText.h"

#include <krcore/values/Variant.h>

namespace KrCore {

UnitValue::UnitValue(double value, const String& unit) : value_(value), unit_(unit) {}

UnitValue::UnitValue(const UnitValue& other) : Heap(), value_(other.value_), unit_(other.unit_) {}

UnitValue& UnitValue::operator=(const UnitValue& other) {
    unit_ = other.unit_;
    value_ = other.value_;
    return *this;
}

void UnitValue::toString(String& text) const {
    const String unit(unit_);
    NumberText(value_, 10).assignTo(text);
    if (unit.isEmpty()) return;
    text.append(' ');
    text.append(unit);
}

int UnitValue::cmp(const UnitValue& other) const {
    if (const int order = unit_.cmp(other.unit_)) return order;
    if (value_ == other.value_) return 0;
    if (value_ < other.value_) return -1;
    return value_ > other.value_ ? 1 : Variant::unordered;
}

} // namespace KrCore
