#include <krcore/live/LiveObject.h>

#include "live/ComponentWalk.h"
#include "live/LiveObjectData.h"
#include "live/reflection/RequestLanguage.h"

#include <krcore/live/LiveObjectClassInfo.h>
#include <krcore/live/LivePropertyManager.h>
#include <krcore/live/ServiceInfo.h>

namespace KrCore {

const ClassInfo* LiveObject::getClassInfo(int flags) const {
    if (!isUsable()) return nullptr;
    InterfacePtr<const ClassInfo>& cached = data_->classInfo;
    auto& self = const_cast<LiveObject&>(*this);
    auto info = cached;
    if (!info || info->getLanguage() != languageOf(flags)) {
        info = InterfacePtr<const ClassInfo>::adopt(new LiveObjectClassInfo(self, flags));
        cached = info;
    }
    return info.detach();
}

/// The record of a property that somebody declares; null for dynamic properties, whose only
/// declaration is their value.
const ServiceInfo* LiveObject::getDeclaration(const String& name, int id, int flags) const {
    if (!isUsable() || data_->properties.find(id)) return nullptr;
    if (propertyManager) {
        ScopedLock guard(*propertyManager);
        auto record =
            InterfacePtr<const ServiceInfo>::adopt(propertyManager->getServiceInfo(name, flags));
        if (record && record->getID() == id) return record.detach();
        if (const ServiceInfo* byID = propertyManager->getServiceInfo(id, flags)) return byID;
    }
    for (ComponentWalk walk(data_->components); walk.next();) {
        const InfoType kind = walk->getType(*this, id);
        if (kind == InfoType::Hidden) break;
        if (kind != InfoType::Unknown) return walk->getServiceInfo(*this, id, flags);
    }
    return nullptr;
}

const ServiceInfo* LiveObject::getDeclaredConstructor(int flags) const {
    if (!isUsable() || !propertyManager) return nullptr;
    ScopedLock guard(*propertyManager);
    return propertyManager->getConstructor(flags);
}

} // namespace KrCore
