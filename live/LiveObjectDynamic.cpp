#include <krcore/live/LiveObject.h>

#include "live/DrawPropertyID.h"
#include "live/LiveObjectData.h"
#include "live/LiveObjectFlags.h"

#include <krcore/foundation/ErrorCode.h>

#include <new>

namespace KrCore {

LiveProperty* LiveObject::createProperty(const String& name, int id, unsigned flags) {
    try {
        return new LiveProperty(*this, name, id, flags);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

LiveProperty* LiveObject::addProperty(const String& name, int id, unsigned flags,
                                      unsigned extraFlags) {
    LiveProperty* record = createProperty(name, id, flags);
    if (!record) return nullptr;
    data_->properties.add(record, extraFlags);
    if (PropertyID::isOperator(id)) flags_ |= ObjectFlag::HasOperators;
    propertyDefsChanged();
    return record;
}

LiveProperty* LiveObject::findProperty(int id) const {
    if (!isUsable()) return nullptr;
    LiveProperty* record = data_->properties.find(id);
    if (record) data_->properties.touch(*record);
    return record;
}

int LiveObject::createIDForName(const String& name, int& id, int flags) {
    id = drawPropertyID();
    return defineIDForName(name, id, flags);
}

int LiveObject::defineIDForName(const String& name, int id, int flags) {
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    if (!(flags_ & ObjectFlag::Dynamic)) return ErrorCode::UnsupportedProperty;
    const bool ignoreCase = (flags & RequestFlag::IgnoreCase) != 0;
    if (data_->properties.find(name, ignoreCase)) return ErrorCode::Redeclared;
    if (!addProperty(name, id, static_cast<unsigned>(flags), 0)) return ErrorCode::OutOfMemory;
    return ErrorCode::Ok;
}

int LiveObject::deleteID(int id) {
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    LiveProperty* record = data_->properties.find(id);
    if (!record || record->has(PropertyFlag::Permanent)) return ErrorCode::NotFound;
    propertyDefsChanged();
    data_->properties.remove(*record);
    return ErrorCode::Ok;
}

int LiveObject::deleteDynamicProperties(bool all) {
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    propertyDefsChanged();
    data_->properties.removeAll(all);
    return ErrorCode::Ok;
}

} // namespace KrCore
