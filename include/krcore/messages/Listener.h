#pragma once

#include <krcore/foundation/Export.h>

namespace KrCore {

class Message;

/// Whoever wants messages of a `Broadcaster` derives from this class. A listener is not owned by
/// the broadcasters it listens to: it removes itself from each of them before it dies.
class KR_API Listener {
public:
    Listener();
    /// A copy listens to nothing, whatever the original listens to.
    Listener(const Listener&);
    Listener& operator=(const Listener&);
    virtual ~Listener();

    /// Called for each message, on the broadcasting thread and with the broadcaster's lock held.
    /// True means consumed: nobody else gets the message. It may add and remove listeners,
    /// broadcast, and even destroy the broadcaster. What it throws leaves `broadcast`; under the
    /// two deletion messages, which a destructor sends, nothing may be thrown. The base class
    /// returns false.
    virtual bool notify(Message& message);
};

} // namespace KrCore
