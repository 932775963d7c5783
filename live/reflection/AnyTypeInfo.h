#pragma once

#include <krcore/live/TypeInfo.h>

namespace KrCore {

/// What may be anything, and nothing more is known.
class AnyTypeInfo : public TypeInfo {
public:
    ~AnyTypeInfo() override;
    VariantType getDataType() const override { return anyType; }

    /// One for all who need it.
    static const TypeInfo& instance();
};

} // namespace KrCore
