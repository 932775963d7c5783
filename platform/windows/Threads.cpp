#include "platform/Threads.h"

#include <process.h>
#include <windows.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace KrCore::Platform {

enum class GateState { Waiting, Open, Abandoned };

// Made with malloc, as the system makes its own record of a thread: the thread may give it back
// last, after its context and even the library are gone.
struct ThreadGate {
    unsigned int (*entry)(void*);
    void* argument;
    HANDLE thread = nullptr;
    std::atomic<GateState> state = GateState::Waiting;
    std::atomic<int> holders = 2; // the creator and the thread
};

namespace {

void dropGate(ThreadGate* gate) {
    if (--gate->holders > 0) return;
    if (gate->thread) CloseHandle(gate->thread);
    gate->~ThreadGate();
    std::free(gate);
}

/// Takes the gate out of the waiting state, if it is still there: the thread is suspended until
/// then.
void decide(ThreadGate& gate, GateState state) {
    GateState waiting = GateState::Waiting;
    if (gate.state.compare_exchange_strong(waiting, state)) ResumeThread(gate.thread);
}

unsigned __stdcall threadMain(void* argument) {
    auto* gate = static_cast<ThreadGate*>(argument);
    if (gate->state == GateState::Open) gate->entry(gate->argument);
    dropGate(gate);
    return 0;
}

} // namespace

ThreadGate* createThread(unsigned int (*entry)(void* argument), void* argument, unsigned int& id) {
    void* place = std::malloc(sizeof(ThreadGate));
    if (!place) return nullptr;
    auto* gate = new (place) ThreadGate{entry, argument};
    const std::uintptr_t handle =
        _beginthreadex(nullptr, 0, threadMain, gate, CREATE_SUSPENDED, &id);
    gate->thread = reinterpret_cast<HANDLE>(handle);
    if (gate->thread) return gate;
    gate->holders = 1;
    dropGate(gate);
    return nullptr;
}

void openGate(ThreadGate* gate) { decide(*gate, GateState::Open); }

void leaveGate(ThreadGate* gate) {
    decide(*gate, GateState::Abandoned);
    dropGate(gate);
}

unsigned int currentThreadId() { return GetCurrentThreadId(); }

void sleepFor(unsigned int milliseconds) { Sleep(milliseconds); }

void yieldThread() { SwitchToThread(); }

} // namespace KrCore::Platform
