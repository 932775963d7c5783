#include <krcore/live/LiveComponent.h>

#include "live/ScopedLock.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/live/LiveObject.h>
#include <krcore/live/LivePropertyManager.h>
#include <krcore/values/Variant.h>

namespace KrCore {

LiveComponent::LiveComponent() = default;

LiveComponent::~LiveComponent() = default;

void LiveComponent::reset() {}

int LiveComponent::getIDForName(const LiveObject&, const String& name, int& id, InfoType& kind,
                                int flags) const {
    id = 0;
    kind = InfoType::Unknown;
    if (name.isEmpty() || !propertyManager) return ErrorCode::NotFound;
    ScopedLock guard(*propertyManager);
    return propertyManager->getIDForName(name, id, kind, flags);
}

int LiveComponent::getNameForID(const LiveObject&, int id, String& name, int flags) const {
    if (!propertyManager) {
        name.erase();
        return ErrorCode::NotFound;
    }
    ScopedLock guard(*propertyManager);
    return propertyManager->getNameForID(id, name, flags);
}

InfoType LiveComponent::getType(const LiveObject&, int id) {
    if (!propertyManager) return InfoType::Unknown;
    ScopedLock guard(*propertyManager);
    return propertyManager->getType(id);
}

bool LiveComponent::hasOperators() const {
    if (!propertyManager) return false;
    ScopedLock guard(*propertyManager);
    return propertyManager->hasOperators();
}

int LiveComponent::enumerate(const LiveObject&, SimpleArray& ids, int flags) const {
    if (!propertyManager) return ErrorCode::Ok;
    ScopedLock guard(*propertyManager);
    return propertyManager->enumerate(ids, flags);
}

const ServiceInfo* LiveComponent::getServiceInfo(const LiveObject&, int id, int flags) const {
    if (!propertyManager) return nullptr;
    ScopedLock guard(*propertyManager);
    return propertyManager->getServiceInfo(id, flags);
}

int LiveComponent::get(const LiveObject& owner, int id, Variant& result, Error* err) const {
    result.erase();
    return owner.setError(ErrorCode::NotFound, id, err, false);
}

int LiveComponent::put(LiveObject& owner, int id, const Variant&, Error* err) {
    return owner.setError(ErrorCode::NotFound, id, err, false);
}

int LiveComponent::call(LiveObject& self, int id, const Array&, Variant& result, Error* err) {
    result.erase();
    return self.setError(ErrorCode::NotFound, id, err, false);
}

bool LiveComponent::isGeneric(int) const { return false; }

bool LiveComponent::isIndexable() const { return false; }

int LiveComponent::getLength(const LiveObject&, unsigned& length) const {
    length = 0;
    return ErrorCode::NotFound;
}

int LiveComponent::putLength(LiveObject&, unsigned) { return ErrorCode::NotFound; }

int LiveComponent::getByIndex(const LiveObject& owner, unsigned index, Variant& result,
                              Error* err) const {
    result.erase();
    return owner.setError(ErrorCode::OutOfRange, static_cast<int>(index), err, true);
}

int LiveComponent::putByIndex(LiveObject& owner, unsigned index, const Variant&, Error* err) {
    return owner.setError(ErrorCode::OutOfRange, static_cast<int>(index), err, true);
}

int LiveComponent::deleteByIndex(LiveObject&, unsigned) { return ErrorCode::Ok; }

} // namespace KrCore
