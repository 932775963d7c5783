#pragma once

#include "live/reflection/SimpleTypeInfo.h"

#include <krcore/containers/SimpleArray.h>

#include <memory>

namespace KrCore {

/// What one field of a descriptor text says; see `TypeInfo::parse`.
struct DescribedField {
    String name;
    String shortDescription;
    String longDescription;
    std::unique_ptr<SimpleTypeInfo> type;
    std::unique_ptr<SimpleTypeInfo> secondType; // of a service only; may be null

    /// Reads the service's own type from its text (`index` -1) or the parameter at `index`.
    static DescribedField read(UnitSpan text, int index);
};

/// The name of a parameter that has none: "arg1" for the one at index 0.
String nameOfParameter(int index);

/// A descriptor text and where its fields start: walking to each of a hundred thousand fields anew
/// would take as many walks.
class DescriptorText {
public:
    explicit DescriptorText(const String& text);

    DescribedField readService() const;
    /// `index` is in 0 ... `parameterCount() - 1`.
    DescribedField readParameter(int index) const;

    /// How many parameters a method has. Kept: as many as there are commas, or 1 when there is none
    /// but a ":"; of a list that starts with a parameter the last one does not count
    /// (held by Descriptor.CountsParametersByTheirCommas).
    int parameterCount() const;

private:
    String text_;
    SimpleArray commas_; // their positions
    bool startsWithParameter_;
};

} // namespace KrCore
