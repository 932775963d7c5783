#pragma once

#include <krcore/foundation/Export.h>

#include <atomic>

namespace KrCore {

class BroadcasterData;
class Listener;
class Message;

/// Hands messages to the listeners registered for them, one by one and before `broadcast` returns.
///
/// A broadcaster whose first listener came in multi-threaded mode may be used from several threads:
/// registration and delivery are serialised by a lock of its own, which is held while listeners
/// run. Destroying it while another thread uses it is the host's error; destroying it from within a
/// listener is allowed and ends the delivery that is going on.
class KR_API Broadcaster {
public:
    constexpr Broadcaster() = default;
    /// Listeners are never copied.
    Broadcaster(const Broadcaster&) {}
    Broadcaster& operator=(const Broadcaster&) { return *this; }
    /// Tells the listeners of deletion messages, and those of every message, first 'DELE' and then
    /// 'DEL!'. The object around this broadcaster is already gone by then.
    ~Broadcaster();

    /// Registers a listener for a message ID, behind those that are there; nothing happens when it
    /// is registered already. `MessageID::All` registers for every message, instead of any single
    /// IDs that the listener had before. Such listeners are asked when nobody registered for the
    /// message's own ID has consumed it. Borrowed: remove the listener before it dies.
    void addListener(Listener& listener, int id);

    /// Removes a registration; `MessageID::All` removes every one of this listener.
    void removeListener(Listener& listener, int id);

    /// Delivers to the listeners of the message's ID in the order of their registration, then to
    /// those of every message, until one returns true. A listener added meanwhile is reached; one
    /// that removed itself does not make the next one be skipped; nobody in a list is called twice.
    /// Returns whether the message was consumed.
    bool broadcast(Message& message) const;
    bool broadcast(int id) const;

    /// Whether anybody would get a message of this ID.
    bool isListening(int id) const;

private:
    BroadcasterData& requireData();

    std::atomic<BroadcasterData*> data_ = nullptr; // made by the first addListener
};

} // namespace KrCore
