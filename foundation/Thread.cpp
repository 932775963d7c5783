#include <krcore/foundation/Thread.h>

#include "foundation/Context.h"
#include "foundation/ModuleHooks.h"
#include "platform/Threads.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/Time.h>

#include <utility>

namespace KrCore {

namespace {

constinit unsigned int mainThreadId = 0;

} // namespace

Thread::Thread() {
    Context* context = currentContext();
    const std::int64_t now = Time::getHiResTimer();
    gate_ = Platform::createThread(go, this, id_);
    if (!gate_) {
        error_ = ErrorCode::CannotExecute;
        id_ = 0;
    } else if (context) {
        context->lapBase = now;
    }
}

Thread::~Thread() {
    if (gate_) Platform::leaveGate(gate_);
}

void Thread::start() {
    if (error_ == 0) Platform::openGate(gate_);
}

// The gate stays with the object, so that a late start meets one that is open already. The active
// flag comes last: once it is down, the owner may delete the object.
unsigned int Thread::go(void* thread) {
    auto* self = static_cast<Thread*>(thread);
    self->run();
    self->active_.store(false, std::memory_order_release);
    return 0;
}

unsigned int Thread::getCurrentID() {
    const unsigned int id = Platform::currentThreadId();
    return id == mainThreadId ? 0 : id;
}

void Thread::sleep(unsigned int milliseconds) { Platform::sleepFor(milliseconds); }

std::int64_t Thread::getHiResTimer() {
    const std::int64_t now = Time::getHiResTimer();
    Context* context = currentContext();
    return context ? now - std::exchange(context->lapBase, now) : 0;
}

void startThreads() { mainThreadId = Platform::currentThreadId(); }

void stopThreads() { mainThreadId = 0; }

} // namespace KrCore
