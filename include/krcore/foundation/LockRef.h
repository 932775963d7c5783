#pragma once

#include <krcore/foundation/Export.h>

namespace KrCore {

class Lock;

/// Holds `lock` for a scope; null holds nothing.
class KR_API LockRef {
public:
    explicit LockRef(Lock* lock);
    ~LockRef();
    LockRef(const LockRef&) = delete;
    LockRef& operator=(const LockRef&) = delete;

private:
    Lock* lock_;
};

} // namespace KrCore
