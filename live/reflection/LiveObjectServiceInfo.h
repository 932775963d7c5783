#pragma once

#include "live/reflection/LiveObjectTypeInfo.h"

#include <krcore/live/ServiceInfo.h>
#include <krcore/text/String.h>

#include <memory>

namespace KrCore {

/// A property or method as one live object offers it. Name and kind are the object's; types,
/// descriptions and parameters come from the declaration, if somebody declares it, else the type is
/// that of the value.
class LiveObjectServiceInfo : public ServiceInfo {
public:
    /// A member of an enumeration is one itself; else the declaration says the state.
    LiveObjectServiceInfo(LiveObject& object, const String& name, int id, InfoType kind,
                          InfoState state, InterfacePtr<const ServiceInfo> declaration);

    int getLanguage() const override;
    InfoState getState() override;
    bool getName(String& name) const override;
    bool getDescription(bool longText, String& text) const override;
    int getID() const override { return id_; }
    /// Of what nobody declares, what the object says now; otherwise, and when it is gone, what it
    /// said when the record was made.
    InfoType getType() const override;
    const TypeInfo& getTypeInfo() const override;
    const TypeInfo& getTypeInfo2() const override;
    int getParamCount() const override;
    const ParamInfo* getParamInfo(int index) const override;
    bool getSampleCode(FileSpec& file) const override;
    bool getSampleCode(String& text) const override;

protected:
    ~LiveObjectServiceInfo() override;

private:
    String name_;
    int id_;
    InfoType kind_;
    InfoState state_;
    InterfacePtr<const ServiceInfo> declaration_;   // null when nobody declares it
    std::unique_ptr<LiveObjectTypeInfo> valueType_; // of what nobody declares
};

} // namespace KrCore
