#include "hosts/HostClassInfo.h"

#include "hosts/NameList.h"

#include <krcore/live/LiveObject.h>
#include <krcore/live/LivePropertyManager.h>
#include <krcore/live/PropertyManagerClassInfo.h>
#include <krcore/live/ServiceInfo.h>

namespace krhost {

using namespace KrCore;

HostClassInfo::HostClassInfo(LiveObject& object, int flags, const ClassTexts& texts)
    : LiveObjectClassInfo(object, flags), texts_(texts),
      isCollection_(object.getAs(TypeTag::Collection) != nullptr) {}

const ClassInfo* HostClassInfo::describe(const LiveObject& object, int flags,
                                         const ClassTexts& texts) {
    if (!object.isValid()) return nullptr;
    return new HostClassInfo(const_cast<LiveObject&>(object), flags, texts);
}

bool HostClassInfo::getSuperclass(String& name) const {
    name = "Object";
    return true;
}

bool HostClassInfo::getDescription(bool longText, String& text) const {
    text = longText ? texts_.details : texts_.description;
    return !text.isEmpty();
}

bool HostClassInfo::getSampleCode(String& text) const {
    text = texts_.sample;
    return !text.isEmpty();
}

HostClassInfo::Declared HostClassInfo::declaredBy(ClassTexts::Declaration declaration) const {
    if (!declaration) return nullptr;
    return Declared::adopt(new PropertyManagerClassInfo(*declaration(), getLanguage()));
}

bool HostClassInfo::enumerateNames(SimpleArray& names, int flags) const {
    const bool ofClass = (flags & RequestFlag::ClassLevel) != 0;
    const Declared declared = declaredBy(ofClass ? texts_.classMembers : texts_.members);
    if (!declared) return LiveObjectClassInfo::enumerateNames(names, flags);
    declared->enumerateNames(names, flags & ~RequestFlag::ClassLevel);
    if (ofClass || !texts_.describesOwnNames) return true;
    addOwnNames(*declared, names, flags);
    return true;
}

void HostClassInfo::addOwnNames(const PropertyManagerClassInfo& declared, SimpleArray& names,
                                int flags) const {
    NameList own;
    LiveObjectClassInfo::enumerateNames(own.words(), flags);
    for (int i = 0; i < own.length(); ++i) {
        const auto known = InterfacePtr<const ServiceInfo>::adopt(declared.getServiceInfo(own[i]));
        if (!known) own.moveTo(names, i);
    }
}

const ServiceInfo* HostClassInfo::getServiceInfo(const String& name) const {
    const Declared declared = declaredBy(texts_.members);
    const ServiceInfo* member = declared ? declared->getServiceInfo(name) : nullptr;
    return member ? member : LiveObjectClassInfo::getServiceInfo(name);
}

const ServiceInfo* HostClassInfo::getStaticServiceInfo(const String& name) const {
    if (const Declared ofClass = declaredBy(texts_.classMembers)) {
        if (const ServiceInfo* member = ofClass->getServiceInfo(name)) return member;
    }
    if (const Declared ofInstances = declaredBy(texts_.members))
        return ofInstances->getStaticServiceInfo(name);
    return LiveObjectClassInfo::getStaticServiceInfo(name);
}

std::unique_ptr<TypeInfo> HostClassInfo::getElementType() const {
    const char* type = texts_.elements ? texts_.elements : isCollection_ ? "any" : nullptr;
    return std::unique_ptr<TypeInfo>(
        type ? TypeInfo::parse(type, -1, nullptr, nullptr, nullptr, nullptr) : nullptr);
}

} // namespace krhost
