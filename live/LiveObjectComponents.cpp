#include <krcore/live/LiveObject.h>

#include "live/ComponentWalk.h"
#include "live/LiveObjectData.h"
#include "live/PointerWord.h"

#include <krcore/foundation/ErrorCode.h>

namespace KrCore {

namespace {

/// Null for a component that has detached itself while it was asked: it may be gone next.
LiveComponent* attachedOnly(const LiveObjectData& data, LiveComponent& component) {
    return data.components.indexOf(wordOf(&component)) >= 0 ? &component : nullptr;
}

} // namespace

int LiveObject::addComponent(LiveComponent& component) {
    if (!data_) return ErrorCode::ObjectInvalid;
    if (data_->components.indexOf(wordOf(&component)) >= 0) return ErrorCode::Ok;
    data_->components.append(wordOf(&component));
    component.addRef();
    propertyDefsChanged();
    return ErrorCode::Ok;
}

int LiveObject::removeComponent(LiveComponent& component) {
    if (!data_) return ErrorCode::ObjectInvalid;
    if (!data_->components.remove(wordOf(&component))) return ErrorCode::Ok;
    propertyDefsChanged();
    component.release();
    return ErrorCode::Ok;
}

LiveComponent* LiveObject::getComponent(int id, const LiveComponent* after) const {
    if (!data_) return nullptr;
    bool isBehind = after == nullptr;
    for (ComponentWalk walk(data_->components); walk.next();) {
        if (isBehind && walk->getType(*this, id) != InfoType::Unknown)
            return attachedOnly(*data_, *walk);
        if (&*walk == after) isBehind = true;
    }
    return nullptr;
}

LiveComponent* LiveObject::lookupComponent(int id) const { return getComponent(id, nullptr); }

LiveComponent* LiveObject::lookupIndexableComponent() const {
    if (!data_) return nullptr;
    for (ComponentWalk walk(data_->components); walk.next();) {
        if (walk->isIndexable()) return attachedOnly(*data_, *walk);
    }
    return nullptr;
}

} // namespace KrCore
