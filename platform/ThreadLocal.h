#pragma once

// `void* threadSlot()` reads one pointer per thread, null at first. The heap does that for every
// block, so it is as cheap as the system allows, and inline where that helps.
#include <ThreadSlot.h>

namespace KrCore::Platform {

/// False when the system has no memory for it.
bool setThreadSlot(void* value);

/// To be called before the other two are of use; false when the system refuses. From then on
/// `atThreadExit` is called with the pointer of every thread that ends with one. On Windows the
/// loader's lock is held then: no waiting for other threads.
bool openThreadSlot(void (*atThreadExit)(void* value));

/// Ends what `openThreadSlot` began; the pointers of all threads are forgotten without a call.
void closeThreadSlot();

} // namespace KrCore::Platform
