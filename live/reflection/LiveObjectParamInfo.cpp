#include "live/reflection/LiveObjectParamInfo.h"

#include "live/reflection/DescriptorText.h"

#include <utility>

namespace KrCore {

LiveObjectParamInfo::LiveObjectParamInfo(InterfacePtr<const ParamInfo> declaration, int index)
    : declaration_(std::move(declaration)), index_(index) {}

LiveObjectParamInfo::~LiveObjectParamInfo() = default;

int LiveObjectParamInfo::getLanguage() const { return declaration_->getLanguage(); }

InfoState LiveObjectParamInfo::getState() {
    return const_cast<ParamInfo&>(*declaration_).getState();
}

bool LiveObjectParamInfo::getName(String& name) const {
    if (!declaration_->getName(name) || name.isEmpty()) name = nameOfParameter(index_);
    return true;
}

bool LiveObjectParamInfo::getDescription(bool longText, String& text) const {
    return declaration_->getDescription(longText, text);
}

const TypeInfo& LiveObjectParamInfo::getTypeInfo() const { return declaration_->getTypeInfo(); }

} // namespace KrCore
