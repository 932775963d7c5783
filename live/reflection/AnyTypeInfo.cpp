#include "live/reflection/AnyTypeInfo.h"

namespace KrCore {

AnyTypeInfo::~AnyTypeInfo() = default;

const TypeInfo& AnyTypeInfo::instance() {
    static const AnyTypeInfo instance;
    return instance;
}

} // namespace KrCore
