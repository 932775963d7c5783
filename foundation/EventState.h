#pragma once

#include "platform/Event.h"

#include <krcore/foundation/Heap.h>

#include <atomic>

namespace KrCore {

/// The cell behind an Event, with the system's event behind it. Waiting threads hold it too, so
/// that it is still there when they wake up after the object has gone.
class EventState : public Heap {
public:
    static EventState* make() {
        return new (Heap::operator new(sizeof(EventState) + Platform::eventByteCount())) EventState;
    }

    void signal() {
        if (event_) Platform::signalEvent(event_);
    }

    // A signal wakes one thread; after the last one, each that wakes passes it on.
    void wait() {
        if (!event_) return;
        ++holders_;
        Platform::waitForEvent(event_);
        if (isClosed_) signal();
        drop();
    }

    /// Lets all waiting threads through and leaves the cell to them.
    void close() {
        isClosed_ = true;
        signal();
        drop();
    }

    /// The owner and the waiting threads.
    int holders() const { return holders_; }

private:
    EventState() : event_(Platform::makeEvent(this + 1)) {}
    ~EventState() {
        if (event_) Platform::destroyEvent(event_);
    }
    void drop() {
        if (--holders_ == 0) delete this;
    }

    std::atomic<int> holders_ = 1;
    std::atomic<bool> isClosed_ = false;
    Platform::Event* event_;
};

} // namespace KrCore
