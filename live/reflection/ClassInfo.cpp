#include <krcore/live/ClassInfo.h>

#include "live/reflection/ClassDescription.h"

#include <krcore/containers/SimpleArray.h>
#include <krcore/files/FileSpec.h>
#include <krcore/live/PropertyFlags.h>
#include <krcore/text/String.h>

namespace KrCore {

ClassInfo::~ClassInfo() = default;

bool ClassInfo::getSuperclass(String& name) const {
    name.erase();
    return false;
}

int ClassInfo::getLanguage() const { return RequestFlag::Library; }

InfoState ClassInfo::getState() { return InfoState::Ordinary; }

bool ClassInfo::getDescription(bool, String& text) const {
    text.erase();
    return false;
}

bool ClassInfo::enumerate(SimpleArray&, int) const { return false; }

const ServiceInfo* ClassInfo::getServiceInfo(int) const { return nullptr; }

const ServiceInfo* ClassInfo::getStaticServiceInfo(const String&) const { return nullptr; }

const ServiceInfo* ClassInfo::getStaticServiceInfo(int) const { return nullptr; }

bool ClassInfo::getSampleCode(FileSpec& file) const {
    file = FileSpec();
    return false;
}

bool ClassInfo::getSampleCode(String& text) const {
    text.erase();
    return false;
}

XML* ClassInfo::toXML() const { return ClassDescription(*this).write().detach(); }

} // namespace KrCore
