#include "platform/Mutex.h"

#include <windows.h>

#include <cstdint>
#include <new>

namespace KrCore::Platform {

struct Mutex {
    CRITICAL_SECTION section;
};

namespace {

constexpr DWORD spinCount = 4000;

/// Leaving a critical section that somebody else holds would break it.
bool isOwner(const Mutex& mutex) {
    const auto owner = reinterpret_cast<std::uintptr_t>(mutex.section.OwningThread);
    return owner == GetCurrentThreadId();
}

} // namespace

std::size_t mutexByteCount() { return sizeof(Mutex); }

Mutex* makeMutex(void* place) {
    static_assert(alignof(Mutex) <= 8);
    auto* mutex = new (place) Mutex;
    InitializeCriticalSectionAndSpinCount(&mutex->section, spinCount);
    return mutex;
}

void destroyMutex(Mutex* mutex) { DeleteCriticalSection(&mutex->section); }

void acquireMutex(Mutex* mutex) { EnterCriticalSection(&mutex->section); }

void releaseMutex(Mutex* mutex) {
    if (isOwner(*mutex)) LeaveCriticalSection(&mutex->section);
}

} // namespace KrCore::Platform
