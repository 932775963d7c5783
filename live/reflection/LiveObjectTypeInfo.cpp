#include "live/reflection/LiveObjectTypeInfo.h"

#include <krcore/foundation/ErrorCode.h>

namespace KrCore {

LiveObjectTypeInfo::LiveObjectTypeInfo(LiveObject& object, int id) : object_(&object), id_(id) {}

LiveObjectTypeInfo::~LiveObjectTypeInfo() = default;

InfoType LiveObjectTypeInfo::getKind() const {
    const auto object = object_.lock();
    return object ? object->getType(id_) : InfoType::Unknown;
}

bool LiveObjectTypeInfo::readValue(Variant& value) const {
    const auto object = object_.lock();
    return object && isReadable(object->getType(id_)) &&
           object->get(id_, value, nullptr) == ErrorCode::Ok;
}

VariantType LiveObjectTypeInfo::getDataType() const {
    Variant value;
    return readValue(value) ? value.getType() : anyType;
}

bool LiveObjectTypeInfo::getDataClass(String& className) const {
    className.erase();
    Variant value;
    if (readValue(value)) className = value.getObjectClassName();
    return !className.isEmpty();
}

} // namespace KrCore
