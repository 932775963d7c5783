#include "platform/Window.h"

namespace KrCore::Platform {

void* topWindow() { return nullptr; }

} // namespace KrCore::Platform
