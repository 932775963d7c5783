#include <krcore/live/ServiceInfo.h>

#include "live/reflection/DescriptionWriter.h"

#include <krcore/files/FileSpec.h>
#include <krcore/live/PropertyFlags.h>

namespace KrCore {

ServiceInfo::~ServiceInfo() = default;

int ServiceInfo::getLanguage() const { return RequestFlag::Library; }

InfoState ServiceInfo::getState() { return InfoState::Ordinary; }

bool ServiceInfo::getDescription(bool, String& text) const {
    text.erase();
    return false;
}

const TypeInfo& ServiceInfo::getTypeInfo2() const { return getTypeInfo(); }

int ServiceInfo::getParamCount() const { return 0; }

const ParamInfo* ServiceInfo::getParamInfo(int) const { return nullptr; }

bool ServiceInfo::getSampleCode(FileSpec& file) const {
    file = FileSpec();
    return false;
}

bool ServiceInfo::getSampleCode(String& text) const {
    text.erase();
    return false;
}

XML* ServiceInfo::toXML() const { return DescriptionWriter().service(*this).detach(); }

} // namespace KrCore
