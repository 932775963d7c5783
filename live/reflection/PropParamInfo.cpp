#include "live/reflection/PropParamInfo.h"

#include <utility>

namespace KrCore {

PropParamInfo::PropParamInfo(DescribedField field) : field_(std::move(field)) {}

PropParamInfo::~PropParamInfo() = default;

bool PropParamInfo::getName(String& name) const {
    name = field_.name;
    return !name.isEmpty();
}

bool PropParamInfo::getDescription(bool longText, String& text) const {
    text = longText ? field_.longDescription : field_.shortDescription;
    return !text.isEmpty();
}

} // namespace KrCore
