#include "live/reflection/PropServiceInfo.h"

#include "live/LivePropertyManagerImpl.h"
#include "live/reflection/PropParamInfo.h"
#include "live/reflection/RequestLanguage.h"

namespace KrCore {

PropServiceInfo::PropServiceInfo(int id, const String& name, int flags, const char* descriptor)
    : descriptor_(descriptor), service_(descriptor_.readService()), id_(id), flags_(flags) {
    service_.name = name;
    if (name.isEmpty()) service_.type->getDataClass(service_.name);
}

PropServiceInfo::~PropServiceInfo() = default;

int PropServiceInfo::getLanguage() const { return languageOf(flags_); }

bool PropServiceInfo::getName(String& name) const {
    name = service_.name;
    return !name.isEmpty();
}

bool PropServiceInfo::getDescription(bool longText, String& text) const {
    text = longText ? service_.longDescription : service_.shortDescription;
    return !text.isEmpty();
}

InfoType PropServiceInfo::getType() const { return kindOf(flags_); }

const TypeInfo& PropServiceInfo::getTypeInfo2() const {
    return service_.secondType ? *service_.secondType : *service_.type;
}

const ParamInfo* PropServiceInfo::getParamInfo(int index) const {
    if (index < 0 || index >= getParamCount()) return nullptr;
    return new PropParamInfo(descriptor_.readParameter(index));
}

const ServiceInfo* makeConstructorInfo(int rowFlags, const char* descriptor) {
    const int flags = (rowFlags & ~PropertyFlag::KindMask) | static_cast<int>(InfoType::Method);
    return new PropServiceInfo(0, String(), flags, descriptor);
}

} // namespace KrCore
