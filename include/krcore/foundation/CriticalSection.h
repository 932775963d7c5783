#pragma once

#include <krcore/foundation/LockRef.h>

namespace KrCore {

/// The other name of `LockRef`.
class KR_API CriticalSection {
public:
    explicit CriticalSection(Lock* lock) : holder_(lock) {}

private:
    LockRef holder_;
};

} // namespace KrCore
