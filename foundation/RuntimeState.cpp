#include "foundation/RuntimeState.h"

#include "foundation/AtomicCount.h"
#include "platform/Window.h"

#include <krcore/foundation/Atomic.h>
#include <krcore/foundation/Version.h>

namespace KrCore {

constinit RuntimeState runtime;

Globals& Globals::get() { return runtime.globals; }

} // namespace KrCore

int KrAtomicInc(void* counter) { return KrCore::countUp(*static_cast<int*>(counter)); }

int KrAtomicDec(void* counter) { return KrCore::countDown(*static_cast<int*>(counter)); }

int getVersion() { return KRCORE_VERSION; }

void DebugAlert(const char*, const char*, int) {}

void* KrGetTopWindow() { return KrCore::Platform::topWindow(); }
