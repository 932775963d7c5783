#include "platform/ThreadLocal.h"

#include <pthread.h>

namespace KrCore::Platform {

namespace {

// The initial-exec model reads the slot with two instructions. The library's share of the static
// thread area, one pointer, fits into what the loader keeps in reserve for libraries that are
// loaded late.
[[gnu::tls_model("initial-exec")]] constinit thread_local void* slot = nullptr;

// Has the same value, for its destructor alone.
constinit pthread_key_t key = 0;
constinit bool isOpen = false;

} // namespace

void* threadSlot() { return slot; }

bool setThreadSlot(void* value) {
    if (!isOpen || pthread_setspecific(key, value) != 0) return false;
    slot = value;
    return true;
}

bool openThreadSlot(void (*atThreadExit)(void* value)) {
    if (!isOpen) isOpen = pthread_key_create(&key, atThreadExit) == 0;
    return isOpen;
}

void closeThreadSlot() {
    if (isOpen) pthread_key_delete(key);
    isOpen = false;
    slot = nullptr;
}

} // namespace KrCore::Platform
