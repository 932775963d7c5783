#include <krcore/live/PropertyManagerClassInfo.h>

#include "live/ScopedLock.h"
#include "live/reflection/NameList.h"
#include "live/reflection/RequestLanguage.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/LivePropertyManager.h>
#include <krcore/live/PropertyID.h>
#include <krcore/live/ServiceInfo.h>

namespace KrCore {

PropertyManagerClassInfo::PropertyManagerClassInfo(LivePropertyManager& manager, int flags)
    : manager_(manager), language_(languageOf(flags)) {}

PropertyManagerClassInfo::~PropertyManagerClassInfo() = default;

int PropertyManagerClassInfo::getLanguage() const { return language_; }

bool PropertyManagerClassInfo::getName(String& name) const {
    const auto constructor =
        InterfacePtr<const ServiceInfo>::adopt(getStaticServiceInfo(PropertyID::Constructor));
    if (constructor) return constructor->getName(name);
    name.erase();
    return false;
}

bool PropertyManagerClassInfo::enumerate(SimpleArray& ids, int flags) const {
    if (flags & RequestFlag::ClassLevel) return true;
    ScopedLock guard(manager_);
    return manager_.enumerate(ids, flags) == ErrorCode::Ok;
}

bool PropertyManagerClassInfo::enumerateNames(SimpleArray& names, int flags) const {
    SimpleArray ids;
    if (!enumerate(ids, flags)) return false;
    ScopedLock guard(manager_);
    appendNames(names, ids, manager_, flags);
    return true;
}

const ServiceInfo* PropertyManagerClassInfo::getServiceInfo(const String& name) const {
    ScopedLock guard(manager_);
    return manager_.getServiceInfo(name, language_);
}

const ServiceInfo* PropertyManagerClassInfo::getServiceInfo(int id) const {
    ScopedLock guard(manager_);
    return manager_.getServiceInfo(id, language_);
}

const ServiceInfo* PropertyManagerClassInfo::getStaticServiceInfo(const String& name) const {
    String ownName;
    return getName(ownName) && name == ownName ? getStaticServiceInfo(PropertyID::Constructor)
                                               : nullptr;
}

const ServiceInfo* PropertyManagerClassInfo::getStaticServiceInfo(int id) const {
    if (id != PropertyID::Constructor) return nullptr;
    ScopedLock guard(manager_);
    return manager_.getConstructor(language_);
}

} // namespace KrCore
