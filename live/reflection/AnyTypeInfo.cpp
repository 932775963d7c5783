#include "live/reflection/AnyTypeInfo.h"

namespace KrCore {

AnyTypeInfo::~AnyTypeInfo() = default;

const TypeInfo& AnyTypeInfo::instance() {
    static const AnyTypeInfo any;
    return any;
}

} // namespace KrCore
