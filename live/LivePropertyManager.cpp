#include <krcore/live/LivePropertyManager.h>

#include "live/DynamicPropertyManager.h"
#include "live/StaticPropertyManager.h"

#include <krcore/live/LivePropertyInfo.h>
#include <krcore/live/PropertyID.h>

#include <memory>

namespace KrCore {

LivePropertyManagerImpl::~LivePropertyManagerImpl() = default;

void LivePropertyManagerImpl::noteID(int id) {
    if (PropertyID::isOperator(id)) hasOperators_ = true;
}

bool isListed(int rowFlags, int request) {
    const InfoType kind = kindOf(rowFlags);
    if (kind == InfoType::ReadWrite && !(request & RequestFlag::ReadWrite)) return false;
    if (kind == InfoType::ReadOnly && !(request & RequestFlag::ReadOnly)) return false;
    if (kind == InfoType::Method && !(request & RequestFlag::Methods)) return false;
    if ((rowFlags & PropertyFlag::Hidden) && !(request & RequestFlag::WithHidden)) return false;
    if ((rowFlags & PropertyFlag::Internal) && !(request & RequestFlag::WithInternal)) return false;
    return isVisible(rowFlags, request);
}

LivePropertyManager::LivePropertyManager(const LivePropertyInfo* table)
    : impl_(new StaticPropertyManager(table)) {}

LivePropertyManager::LivePropertyManager() : impl_(new DynamicPropertyManager) {}

LivePropertyManager::~LivePropertyManager() { delete impl_; }

int LivePropertyManager::getIDForName(const String& name, int& id, InfoType& kind,
                                      int flags) const {
    return impl_->getIDForName(name, id, kind, flags);
}

int LivePropertyManager::getNameForID(int id, String& name, int flags) const {
    return impl_->getNameForID(id, name, flags);
}

InfoType LivePropertyManager::getType(int id) { return impl_->getType(id); }

int LivePropertyManager::enumerate(SimpleArray& ids, int flags) const {
    return impl_->enumerate(ids, flags);
}

const ServiceInfo* LivePropertyManager::getConstructor(int flags) const {
    return impl_->getConstructor(flags);
}

const ServiceInfo* LivePropertyManager::getServiceInfo(const String& name, int flags) const {
    return impl_->getServiceInfo(name, flags);
}

const ServiceInfo* LivePropertyManager::getServiceInfo(int id, int flags) const {
    return impl_->getServiceInfo(id, flags);
}

bool LivePropertyManager::hasOperators() const { return impl_->hasOperators(); }

void LivePropertyManager::becomeDynamic() {
    const LivePropertyInfo* table = impl_->getTable();
    if (!table) return;
    auto dynamic = std::make_unique<DynamicPropertyManager>();
    dynamic->registerProperties(table);
    delete impl_;
    impl_ = dynamic.release();
    ++definitionStamp_; // of two rows with one name the last one counts from now on
}

void LivePropertyManager::registerProperties(const LivePropertyInfo* table) {
    if (!table) return;
    becomeDynamic();
    ++definitionStamp_;
    impl_->registerProperties(table);
}

void LivePropertyManager::registerProperty(const LivePropertyInfo& row) {
    registerProperty(row.name, row.id, row.flags, row.descriptor);
}

void LivePropertyManager::registerProperty(const char* name, int id, int flags,
                                           const char* descriptor) {
    if (!name) return;
    becomeDynamic();
    ++definitionStamp_;
    impl_->registerProperty(name, id, flags, descriptor);
}

} // namespace KrCore
