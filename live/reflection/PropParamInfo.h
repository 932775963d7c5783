#pragma once

#include "live/reflection/DescriptorText.h"

#include <krcore/live/ParamInfo.h>

namespace KrCore {

/// A parameter as a descriptor text declares it.
class PropParamInfo : public ParamInfo {
public:
    explicit PropParamInfo(DescribedField field);

    bool getName(String& name) const override;
    bool getDescription(bool longText, String& text) const override;
    const TypeInfo& getTypeInfo() const override { return *field_.type; }

protected:
    ~PropParamInfo() override;

private:
    DescribedField field_;
};

} // namespace KrCore
