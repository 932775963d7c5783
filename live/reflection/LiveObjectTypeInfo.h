#pragma once

#include <krcore/foundation/WeakRef.h>
#include <krcore/live/InfoType.h>
#include <krcore/live/LiveObject.h>
#include <krcore/live/TypeInfo.h>
#include <krcore/values/Variant.h>

namespace KrCore {

/// The type of the value that a property has at the moment, for properties that nobody declares.
/// Methods, and properties of an object that is gone, may be anything.
class LiveObjectTypeInfo : public TypeInfo {
public:
    LiveObjectTypeInfo(LiveObject& object, int id);
    ~LiveObjectTypeInfo() override;

    /// The property's kind at the moment; `InfoType::Unknown` when the object is gone.
    InfoType getKind() const;
    VariantType getDataType() const override;
    bool getDataClass(String& className) const override;

private:
    bool readValue(Variant& value) const;

    WeakRef<LiveObject> object_;
    int id_;
};

} // namespace KrCore
