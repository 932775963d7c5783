#include "platform/ThreadLocal.h"

#include <pthread.h>

namespace KrCore::Platform {

constinit thread_local void* threadSlotValue = nullptr;

namespace {

// Has the same value, for its destructor alone.
constinit pthread_key_t key = 0;
constinit bool isOpen = false;

} // namespace

bool setThreadSlot(void* value) {
    if (!isOpen || pthread_setspecific(key, value) != 0) return false;
    threadSlotValue = value;
    return true;
}

bool openThreadSlot(void (*atThreadExit)(void* value)) {
    if (!isOpen) isOpen = pthread_key_create(&key, atThreadExit) == 0;
    return isOpen;
}

void closeThreadSlot() {
    if (isOpen) pthread_key_delete(key);
    isOpen = false;
    threadSlotValue = nullptr;
}

} // namespace KrCore::Platform
