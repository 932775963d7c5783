#include "live/reflection/LiveObjectServiceInfo.h"

#include "live/reflection/LiveObjectParamInfo.h"

#include <utility>

namespace KrCore {

LiveObjectServiceInfo::LiveObjectServiceInfo(LiveObject& object, const String& name, int id,
                                             InfoType kind, InfoState state,
                                             InterfacePtr<const ServiceInfo> declaration)
    : name_(name), id_(id), kind_(kind), state_(state), declaration_(std::move(declaration)) {
    if (!declaration_) valueType_ = std::make_unique<LiveObjectTypeInfo>(object, id);
}

LiveObjectServiceInfo::~LiveObjectServiceInfo() = default;

int LiveObjectServiceInfo::getLanguage() const {
    return declaration_ ? declaration_->getLanguage() : ServiceInfo::getLanguage();
}

InfoState LiveObjectServiceInfo::getState() {
    if (state_ == InfoState::Enumeration || !declaration_) return state_;
    return const_cast<ServiceInfo&>(*declaration_).getState();
}

bool LiveObjectServiceInfo::getName(String& name) const {
    name = name_;
    return true;
}

bool LiveObjectServiceInfo::getDescription(bool longText, String& text) const {
    return declaration_ ? declaration_->getDescription(longText, text)
                        : ServiceInfo::getDescription(longText, text);
}

InfoType LiveObjectServiceInfo::getType() const {
    const InfoType kind = valueType_ ? valueType_->getKind() : kind_;
    return kind == InfoType::Unknown ? kind_ : kind;
}

const TypeInfo& LiveObjectServiceInfo::getTypeInfo() const {
    return declaration_ ? declaration_->getTypeInfo() : *valueType_;
}

const TypeInfo& LiveObjectServiceInfo::getTypeInfo2() const {
    return declaration_ ? declaration_->getTypeInfo2() : *valueType_;
}

int LiveObjectServiceInfo::getParamCount() const {
    return declaration_ ? declaration_->getParamCount() : 0;
}

const ParamInfo* LiveObjectServiceInfo::getParamInfo(int index) const {
    if (!declaration_) return nullptr;
    auto parameter = InterfacePtr<const ParamInfo>::adopt(declaration_->getParamInfo(index));
    return parameter ? new LiveObjectParamInfo(std::move(parameter), index) : nullptr;
}

bool LiveObjectServiceInfo::getSampleCode(FileSpec& file) const {
    return declaration_ ? declaration_->getSampleCode(file) : ServiceInfo::getSampleCode(file);
}

bool LiveObjectServiceInfo::getSampleCode(String& text) const {
    return declaration_ ? declaration_->getSampleCode(text) : ServiceInfo::getSampleCode(text);
}

} // namespace KrCore
