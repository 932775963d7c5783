#pragma once

#include <krcore/foundation/Heap.h>

namespace KrCore {

class EventState;

/// Wakes one waiting thread for each signal. Signals do not add up: while nobody waits, any number
/// of them lets one `wait` through. Both operations do nothing when the system could not make the
/// event.
///
/// The destructor lets every thread through that is still waiting.
class KR_API Event : public Heap {
public:
    Event();
    ~Event();
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    void signal();
    void wait();

private:
    EventState* state_;
};

} // namespace KrCore
