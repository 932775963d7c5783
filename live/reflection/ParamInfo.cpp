#include <krcore/live/ParamInfo.h>

#include "live/reflection/AnyTypeInfo.h"

#include <krcore/live/PropertyFlags.h>
#include <krcore/text/String.h>

namespace KrCore {

ParamInfo::~ParamInfo() = default;

int ParamInfo::getLanguage() const { return RequestFlag::Library; }

InfoState ParamInfo::getState() { return InfoState::Ordinary; }

bool ParamInfo::getName(String& name) const {
    name.erase();
    return false;
}

bool ParamInfo::getDescription(bool, String& text) const {
    text.erase();
    return false;
}

const TypeInfo& ParamInfo::getTypeInfo() const { return AnyTypeInfo::instance(); }

} // namespace KrCore
