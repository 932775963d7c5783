#include "platform/ThreadLocal.h"

#include <windows.h>

namespace KrCore::Platform {

namespace {

constinit DWORD slot = TLS_OUT_OF_INDEXES;
using ThreadExitHandler = void (*)(void* value);
constinit ThreadExitHandler threadExitHandler = nullptr;

} // namespace

void* threadSlot() { return slot == TLS_OUT_OF_INDEXES ? nullptr : TlsGetValue(slot); }

bool setThreadSlot(void* value) {
    return slot != TLS_OUT_OF_INDEXES && TlsSetValue(slot, value) != 0;
}

bool openThreadSlot(void (*atThreadExit)(void* value)) {
    if (slot == TLS_OUT_OF_INDEXES) slot = TlsAlloc();
    threadExitHandler = atThreadExit;
    return slot != TLS_OUT_OF_INDEXES;
}

void closeThreadSlot() {
    if (slot != TLS_OUT_OF_INDEXES) TlsFree(slot);
    slot = TLS_OUT_OF_INDEXES;
}

} // namespace KrCore::Platform

/// The library's entry point. It starts and stops nothing, since loading a library is no moment to
/// do work: hosts call InitTerm::init and InitTerm::exit. It only ends the context of a thread that
/// ends.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    using namespace KrCore::Platform;
    if (reason == DLL_THREAD_DETACH) {
        if (void* value = threadSlot()) threadExitHandler(value);
    }
    return TRUE;
}
