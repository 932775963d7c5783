#include "platform/Mutex.h"

#include <pthread.h>

#include <atomic>
#include <new>

namespace KrCore::Platform {

// A plain mutex with the recursion beside it: the system's recursive kind cannot spin, and a
// release by the wrong thread is ours to recognise.
struct Mutex {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    std::atomic<pthread_t> owner = 0;
    int depth = 0;
};

namespace {

constexpr int spinCount = 4000;

bool isOwner(const Mutex& mutex) {
    return mutex.owner.load(std::memory_order_relaxed) == pthread_self();
}

/// Tells the processor that this thread only waits.
inline void pauseBriefly() {
#if defined(__x86_64__)
    __builtin_ia32_pause();
#endif
}

/// True when the mutex became free while spinning and is ours now.
bool spinFor(Mutex& mutex) {
    for (int round = 0; round < spinCount; ++round) {
        if (mutex.owner.load(std::memory_order_relaxed) == 0 &&
            pthread_mutex_trylock(&mutex.mutex) == 0)
            return true;
        pauseBriefly();
    }
    return false;
}

} // namespace

std::size_t mutexByteCount() { return sizeof(Mutex); }

Mutex* makeMutex(void* place) {
    static_assert(alignof(Mutex) <= 8);
    return new (place) Mutex;
}

void destroyMutex(Mutex* mutex) {
    pthread_mutex_destroy(&mutex->mutex);
    mutex->~Mutex();
}

void acquireMutex(Mutex* mutex) {
    if (!isOwner(*mutex)) {
        if (!spinFor(*mutex)) pthread_mutex_lock(&mutex->mutex);
        mutex->owner.store(pthread_self(), std::memory_order_relaxed);
    }
    ++mutex->depth;
}

void releaseMutex(Mutex* mutex) {
    if (!isOwner(*mutex) || --mutex->depth > 0) return;
    mutex->owner.store(0, std::memory_order_relaxed);
    pthread_mutex_unlock(&mutex->mutex);
}

} // namespace KrCore::Platform
