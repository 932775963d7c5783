#pragma once

#include "live/reflection/DescriptorText.h"

#include <krcore/live/ServiceInfo.h>

namespace KrCore {

/// A property or method as a row of a class's table declares it. It keeps copies of all texts.
class PropServiceInfo : public ServiceInfo {
public:
    /// `flags` are those of the row, its kind included. A row without a name, the constructor's,
    /// gets that of the class it makes. `descriptor` may be null.
    PropServiceInfo(int id, const String& name, int flags, const char* descriptor);

    int getLanguage() const override;
    bool getName(String& name) const override;
    bool getDescription(bool longText, String& text) const override;
    int getID() const override { return id_; }
    InfoType getType() const override;
    const TypeInfo& getTypeInfo() const override { return *service_.type; }
    const TypeInfo& getTypeInfo2() const override;
    int getParamCount() const override { return descriptor_.parameterCount(); }
    const ParamInfo* getParamInfo(int index) const override;

protected:
    ~PropServiceInfo() override;

private:
    DescriptorText descriptor_;
    DescribedField service_;
    int id_;
    int flags_;
};

/// The record of a constructor row: a method without an ID, whatever the row says.
const ServiceInfo* makeConstructorInfo(int rowFlags, const char* descriptor);

} // namespace KrCore
