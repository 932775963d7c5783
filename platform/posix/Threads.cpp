#include "platform/Threads.h"

#include <pthread.h>
#include <sched.h>
#include <time.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace KrCore::Platform {

enum class GateState { Waiting, Open, Abandoned };

// Made with malloc, as the system makes its own record of a thread: the thread may give it back
// last, after its context and even the library are gone.
struct ThreadGate {
    unsigned int (*entry)(void*);
    void* argument;
    unsigned int id;
    GateState state = GateState::Waiting;
    std::atomic<int> holders = 2; // the creator and the thread
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    pthread_cond_t condition = PTHREAD_COND_INITIALIZER;
};

namespace {

// The library numbers threads itself: the system's own 32-bit number is known only to the running
// thread.
constinit std::atomic<unsigned int> lastThreadId = 0;
constinit thread_local unsigned int threadId = 0;

unsigned int nextThreadId() {
    unsigned int id = 0;
    while (id == 0)
        id = ++lastThreadId;
    return id;
}

void dropGate(ThreadGate* gate) {
    if (--gate->holders > 0) return;
    pthread_cond_destroy(&gate->condition);
    pthread_mutex_destroy(&gate->mutex);
    gate->~ThreadGate();
    std::free(gate);
}

/// Takes the gate out of the waiting state, if it is still there.
void decide(ThreadGate& gate, GateState state) {
    pthread_mutex_lock(&gate.mutex);
    if (gate.state == GateState::Waiting) gate.state = state;
    pthread_cond_signal(&gate.condition);
    pthread_mutex_unlock(&gate.mutex);
}

GateState waitAtGate(ThreadGate& gate) {
    pthread_mutex_lock(&gate.mutex);
    while (gate.state == GateState::Waiting)
        pthread_cond_wait(&gate.condition, &gate.mutex);
    const GateState state = gate.state;
    pthread_mutex_unlock(&gate.mutex);
    return state;
}

void* threadMain(void* argument) {
    auto* gate = static_cast<ThreadGate*>(argument);
    threadId = gate->id;
    if (waitAtGate(*gate) == GateState::Open) gate->entry(gate->argument);
    dropGate(gate);
    return nullptr;
}

bool startDetached(ThreadGate* gate) {
    pthread_t thread;
    if (pthread_create(&thread, nullptr, threadMain, gate) != 0) return false;
    pthread_detach(thread);
    return true;
}

} // namespace

ThreadGate* createThread(unsigned int (*entry)(void* argument), void* argument, unsigned int& id) {
    void* place = std::malloc(sizeof(ThreadGate));
    if (!place) return nullptr;
    auto* gate = new (place) ThreadGate{entry, argument, nextThreadId()};
    id = gate->id;
    if (startDetached(gate)) return gate;
    gate->holders = 1;
    dropGate(gate);
    return nullptr;
}

void openGate(ThreadGate* gate) { decide(*gate, GateState::Open); }

void leaveGate(ThreadGate* gate) {
    decide(*gate, GateState::Abandoned);
    dropGate(gate);
}

unsigned int currentThreadId() {
    if (threadId == 0) threadId = nextThreadId();
    return threadId;
}

void sleepFor(unsigned int milliseconds) {
    timespec rest = {static_cast<time_t>(milliseconds / 1000),
                     static_cast<int>(milliseconds % 1000) * 1000000};
    while (nanosleep(&rest, &rest) != 0) {
    }
}

void yieldThread() { sched_yield(); }

} // namespace KrCore::Platform
