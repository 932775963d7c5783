#pragma once

#include "platform/FileSystem.h"

namespace KrCore::Platform {

/// What an `errno` means to the library.
FileFault faultOf(int systemError);

/// The result of a system call that returns 0 or sets `errno`.
FileFault faultOfCall(int result);

} // namespace KrCore::Platform
