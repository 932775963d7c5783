#pragma once

#include <krcore/containers/SimpleArray.h>
#include <krcore/containers/SparseArray.h>
#include <krcore/foundation/Root.h>

namespace KrCore {

class Listener;
class Lock;
class Message;

/// The listeners of one broadcaster. The broadcaster owns the block; deliveries that go on when it
/// dies keep it until the last of them has ended. All members expect the lock to be held.
class BroadcasterData : public Root {
public:
    BroadcasterData();
    ~BroadcasterData() override;

    void add(Listener& listener, int id);
    void remove(Listener& listener, int id);
    bool isListening(int id) const;

    /// Whether the two deletion messages would reach anybody.
    bool wantsDeletion() const { return deletionListeners_ > 0 || allListeners_.length() > 0; }

    /// Delivers to the listeners of the message's ID, then to those of every message.
    bool deliver(Message& message);

    Lock* getLock() const { return lock_; }

    /// Brackets a delivery. `endDelivery` says whether the block is to be deleted now, because the
    /// broadcaster has died and this was the last delivery.
    void beginDelivery() { ++deliveries_; }
    [[nodiscard]] bool endDelivery();
    /// The broadcaster dies. Says whether the block is to be deleted now.
    [[nodiscard]] bool abandon();

private:
    bool deliverTo(SimpleArray& list, Message& message);
    bool removeFrom(SimpleArray& list, Listener& listener);
    void removeFromEveryID(Listener& listener);
    void dropEmptyLists();
    SimpleArray* listOf(int id) const {
        return lastList_ && id == lastID_ ? lastList_ : lookUpList(id);
    }
    SimpleArray* lookUpList(int id) const;
    SimpleArray& requireList(int id);

    SimpleArray allListeners_;  // borrowed Listener*
    SparseArray byID_;          // message ID to owned SimpleArray* of borrowed Listener*
    int deletionListeners_ = 0; // registrations under deletion IDs
    Lock* lock_ = nullptr;      // owned; null single-threaded
    SimpleArray ids_;           // the keys of byID_, so that removing a listener allocates nothing
    mutable int lastID_ = 0;    // the last answer of lookUpList
    mutable SimpleArray* lastList_ = nullptr;
    int deliveries_ = 0;         // that are going on, one within the other
    bool hasEmptyLists_ = false; // that a delivery in progress keeps from being dropped
    unsigned changes_ = 0;       // advances with every registration that comes or goes
    bool isAbandoned_ = false;
};

} // namespace KrCore
