#pragma once

namespace KrCore::Platform {

/// The process's top-level window, or null.
void* topWindow();

} // namespace KrCore::Platform
