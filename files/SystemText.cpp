#include "files/SystemText.h"

#include <krcore/foundation/ErrorCode.h>

namespace KrCore {

int codeOf(Platform::FileFault fault) {
    using Platform::FileFault;
    switch (fault) {
    case FileFault::None:
        return ErrorCode::Ok;
    case FileFault::NotFound:
    case FileFault::Invalid:
        return ErrorCode::FileNotFound;
    case FileFault::Exists:
        return ErrorCode::FileExists;
    case FileFault::Denied:
        return ErrorCode::PermissionDenied;
    case FileFault::NotEmpty:
    case FileFault::Failed:
        break;
    }
    return ErrorCode::IOError;
}

} // namespace KrCore
