#pragma once

namespace KrCore::Platform {

/// A thread that waits at its gate until it may run.
struct ThreadGate;

/// Makes a thread that will call `entry(argument)` once its gate is opened; `id` becomes its
/// identifier. Null when the system refuses.
ThreadGate* createThread(unsigned int (*entry)(void* argument), void* argument, unsigned int& id);

/// Lets the thread run; ignored the second time.
void openGate(ThreadGate* gate);

/// To be called once, from any thread: the gate is no longer of use to the caller. A thread that
/// still waits there ends without calling anything.
void leaveGate(ThreadGate* gate);

/// Never 0, and not given to another thread while this one runs.
unsigned int currentThreadId();

void sleepFor(unsigned int milliseconds);
void yieldThread();

} // namespace KrCore::Platform
