#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Heap.h>
#include <krcore/text/String.h>

namespace KrCore {

/// A number with the name of its unit, such as 12.5 "pt". Units are not converted into each other;
/// their names compare exactly.
class KR_API UnitValue : public Heap {
public:
    UnitValue() = default;
    UnitValue(double value, const String& unit);
    UnitValue(const UnitValue& other);
    UnitValue& operator=(const UnitValue& other);
    ~UnitValue() = default;

    double getValue() const { return value_; }
    void setValue(double value) { value_ = value; }
    const String& getUnit() const { return unit_; }
    void setUnit(const String& unit) { unit_ = unit; }

    /// Sets `text` to number, blank and unit ("12.5 pt"), or to the number alone when there is no
    /// unit.
    void toString(String& text) const;

    /// Orders by number when the units are the same, otherwise by the names of the units. Negative,
    /// 0 or positive; 0x7FFFFFFF when a number is NaN and the units are the same.
    int cmp(const UnitValue& other) const;
    bool operator==(const UnitValue& other) const { return cmp(other) == 0; }

private:
    double value_ = 0;
    String unit_;
};

} // namespace KrCore
