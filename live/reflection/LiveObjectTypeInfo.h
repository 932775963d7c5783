#pragma once

#include <krcore/live/ObjectWatcher.h>
#include <krcore/live/TypeInfo.h>
#include <krcore/values/Variant.h>

namespace KrCore {

/// The type of the value that a property has at the moment, for properties that nobody declares.
/// Methods, and properties of an object that is gone, may be anything.
class LiveObjectTypeInfo : public TypeInfo, public ObjectWatcher {
public:
    LiveObjectTypeInfo(LiveObject& object, int id);
    ~LiveObjectTypeInfo() override;

    VariantType getDataType() const override;
    bool getDataClass(String& className) const override;

private:
    bool readValue(Variant& value) const;

    int id_;
};

} // namespace KrCore
