#pragma once

namespace KrCore::Platform {

void* threadSlot();

} // namespace KrCore::Platform
