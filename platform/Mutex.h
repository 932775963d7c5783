#pragma once

#include <cstddef>

namespace KrCore::Platform {

/// A recursive mutex that spins for a moment before it sleeps. The caller supplies the memory.
struct Mutex;

/// The bytes of one, at an address divisible by 8.
std::size_t mutexByteCount();

Mutex* makeMutex(void* place);
void destroyMutex(Mutex* mutex);

void acquireMutex(Mutex* mutex);
/// Ignored in a thread that does not hold the mutex.
void releaseMutex(Mutex* mutex);

} // namespace KrCore::Platform
