#include <krcore/live/LiveObjectClassInfo.h>

#include "live/reflection/LiveObjectServiceInfo.h"
#include "live/reflection/NameList.h"
#include "live/reflection/RequestLanguage.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/live/LiveObject.h>

#include <utility>

namespace KrCore {

LiveObjectClassInfo::LiveObjectClassInfo(LiveObject& object, int flags)
    : object_(&object), className_(object.getClassName()), language_(languageOf(flags)) {}

LiveObjectClassInfo::~LiveObjectClassInfo() = default;

InterfacePtr<LiveObject> LiveObjectClassInfo::getObject() const { return object_.lock(); }

int LiveObjectClassInfo::getLanguage() const { return language_; }

bool LiveObjectClassInfo::getName(String& name) const {
    name = className_;
    return true;
}

bool LiveObjectClassInfo::isEnumeration() const {
    return const_cast<LiveObjectClassInfo*>(this)->getState() == InfoState::Enumeration;
}

/// The object, when its members are those of the class (`RequestFlag::ClassLevel`) or of its
/// instances (0), whichever is asked for.
InterfacePtr<LiveObject> LiveObjectClassInfo::ownerOfMembers(int level) const {
    const int ownLevel = isEnumeration() ? RequestFlag::ClassLevel : 0;
    return level == ownLevel ? getObject() : nullptr;
}

bool LiveObjectClassInfo::enumerate(SimpleArray& ids, int flags) const {
    const auto object = ownerOfMembers(flags & RequestFlag::ClassLevel);
    return object && object->enumerate(ids, flags) == ErrorCode::Ok;
}

bool LiveObjectClassInfo::enumerateNames(SimpleArray& names, int flags) const {
    SimpleArray ids;
    if (!enumerate(ids, flags)) return false;
    if (const auto object = getObject()) appendNames(names, ids, *object, flags);
    return true;
}

const ServiceInfo* LiveObjectClassInfo::getServiceInfo(const String& name) const {
    return makeMember(name, 0);
}

const ServiceInfo* LiveObjectClassInfo::getServiceInfo(int id) const { return makeMember(id, 0); }

const ServiceInfo* LiveObjectClassInfo::getStaticServiceInfo(const String& name) const {
    if (name == className_) return makeConstructor();
    return makeMember(name, RequestFlag::ClassLevel);
}

const ServiceInfo* LiveObjectClassInfo::getStaticServiceInfo(int id) const {
    if (id == PropertyID::Constructor) return makeConstructor();
    return makeMember(id, RequestFlag::ClassLevel);
}

const ServiceInfo* LiveObjectClassInfo::makeConstructor() const {
    const auto object = getObject();
    if (!object) return nullptr;
    auto declaration =
        InterfacePtr<const ServiceInfo>::adopt(object->getDeclaredConstructor(language_));
    String name;
    if (!declaration || declaration->getName(name)) return declaration.detach();
    // Its descriptor names no class.
    const int id = declaration->getID();
    return new LiveObjectServiceInfo(*object, className_, id, InfoType::Method, InfoState::Ordinary,
                                     std::move(declaration));
}

const ServiceInfo* LiveObjectClassInfo::makeMember(const String& name, int level) const {
    const auto object = ownerOfMembers(level);
    int id = 0;
    InfoType kind = InfoType::Unknown;
    if (!object || object->getIDForName(name, id, kind, language_) != ErrorCode::Ok) return nullptr;
    return makeService(*object, name, id, kind);
}

const ServiceInfo* LiveObjectClassInfo::makeMember(int id, int level) const {
    const auto object = ownerOfMembers(level);
    String name;
    if (!object || object->getNameForID(id, name, language_) != ErrorCode::Ok) return nullptr;
    const InfoType kind = object->getType(id);
    return kind == InfoType::Unknown ? nullptr : makeService(*object, name, id, kind);
}

const ServiceInfo* LiveObjectClassInfo::makeService(LiveObject& object, const String& name, int id,
                                                    InfoType kind) const {
    auto declaration =
        InterfacePtr<const ServiceInfo>::adopt(object.getDeclaration(name, id, language_));
    // The name as it is written, for a language that finds it in any case.
    String ownName;
    const bool isSpelled =
        object.getNameForID(id, ownName, language_) == ErrorCode::Ok && ownName.ucmp(name) == 0;
    const InfoState state = isEnumeration() ? InfoState::Enumeration : InfoState::Ordinary;
    return new LiveObjectServiceInfo(object, isSpelled ? ownName : name, id, kind, state,
                                     std::move(declaration));
}

} // namespace KrCore
