#pragma once

#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/ParamInfo.h>

namespace KrCore {

/// A parameter of a method that a live object offers: what the declaration says, but never without
/// a name, as components of hosts may leave it out.
class LiveObjectParamInfo : public ParamInfo {
public:
    LiveObjectParamInfo(InterfacePtr<const ParamInfo> declaration, int index);

    int getLanguage() const override;
    InfoState getState() override;
    bool getName(String& name) const override;
    bool getDescription(bool longText, String& text) const override;
    const TypeInfo& getTypeInfo() const override;

protected:
    ~LiveObjectParamInfo() override;

private:
    InterfacePtr<const ParamInfo> declaration_;
    int index_;
};

} // namespace KrCore
