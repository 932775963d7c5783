#include "live/reflection/LiveObjectTypeInfo.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/live/LiveObject.h>

namespace KrCore {

LiveObjectTypeInfo::LiveObjectTypeInfo(LiveObject& object, int id)
    : ObjectWatcher(object), id_(id) {}

LiveObjectTypeInfo::~LiveObjectTypeInfo() = default;

bool LiveObjectTypeInfo::readValue(Variant& value) const {
    const auto object = getObject();
    return object && isReadable(object->getType(id_)) &&
           object->get(id_, value, nullptr) == ErrorCode::Ok;
}

VariantType LiveObjectTypeInfo::getDataType() const {
    Variant value;
    return readValue(value) ? value.getType() : any;
}

bool LiveObjectTypeInfo::getDataClass(String& className) const {
    className.erase();
    Variant value;
    if (readValue(value)) className = value.getObjectClassName();
    return !className.isEmpty();
}

} // namespace KrCore
