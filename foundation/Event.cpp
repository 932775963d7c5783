#include <krcore/foundation/Event.h>

#include "platform/Event.h"

#include <atomic>

namespace KrCore {

/// The cell with the system's event behind it. Waiting threads hold it too, so that it is still
/// there when they wake up after the object has gone.
struct Event::State : Heap {
    std::atomic<int> holders = 1;
    std::atomic<bool> isClosed = false;
    Platform::Event* event = nullptr;

    State() : event(Platform::makeEvent(this + 1)) {}
    ~State() {
        if (event) Platform::destroyEvent(event);
    }
    static State* make() {
        return new (Heap::operator new(sizeof(State) + Platform::eventByteCount())) State;
    }
    void drop() {
        if (--holders == 0) delete this;
    }
};

Event::Event() : state_(State::make()) {}

Event::~Event() {
    state_->isClosed = true;
    signal();
    state_->drop();
}

void Event::signal() {
    if (state_->event) Platform::signalEvent(state_->event);
}

// A signal wakes one thread; after the last one, each that wakes passes it on.
void Event::wait() {
    State* state = state_;
    if (!state->event) return;
    ++state->holders;
    Platform::waitForEvent(state->event);
    if (state->isClosed) Platform::signalEvent(state->event);
    state->drop();
}

} // namespace KrCore
