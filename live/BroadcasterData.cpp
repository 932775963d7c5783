#include "live/BroadcasterData.h"

#include "live/NotifiedListeners.h"
#include "live/PointerWord.h"

#include <krcore/foundation/InitTerm.h>
#include <krcore/foundation/Lock.h>
#include <krcore/messages/Listener.h>
#include <krcore/messages/Message.h>

#include <memory>
#include <utility>

namespace KrCore {

namespace {

/// 'DELE', 'DEL!' and every other ID that begins with "DEL".
bool isDeletionID(int id) {
    constexpr unsigned topThreeBytes = 0xFFFFFF00U;
    return (static_cast<unsigned>(id) & topThreeBytes) ==
           (static_cast<unsigned>(MessageID::Deleted) & topThreeBytes);
}

} // namespace

BroadcasterData::BroadcasterData() {
    if (InitTerm::isMT()) lock_ = new Lock;
}

BroadcasterData::~BroadcasterData() {
    for (long long id : ids_)
        delete pointerOf<SimpleArray>(byID_.find(id));
    delete lock_;
}

SimpleArray* BroadcasterData::lookUpList(int id) const {
    lastID_ = id;
    lastList_ = pointerOf<SimpleArray>(byID_.find(id));
    return lastList_;
}

SimpleArray& BroadcasterData::requireList(int id) {
    if (SimpleArray* list = listOf(id)) return *list;
    auto list = std::make_unique<SimpleArray>();
    byID_.set(id, wordOf(list.get()));
    try {
        ids_.append(id);
    } catch (...) {
        byID_.remove(id);
        throw;
    }
    return *list.release();
}

void BroadcasterData::add(Listener& listener, int id) {
    const bool wantsAll = id == MessageID::All;
    if (wantsAll) removeFromEveryID(listener);
    SimpleArray& list = wantsAll ? allListeners_ : requireList(id);
    if (list.indexOf(wordOf(&listener)) >= 0) return;
    list.append(wordOf(&listener));
    ++changes_;
    if (isDeletionID(id)) ++deletionListeners_;
}

bool BroadcasterData::removeFrom(SimpleArray& list, Listener& listener) {
    if (!list.remove(wordOf(&listener))) return false;
    ++changes_;
    return true;
}

void BroadcasterData::remove(Listener& listener, int id) {
    if (id == MessageID::All) {
        removeFromEveryID(listener);
        removeFrom(allListeners_, listener);
        return;
    }
    SimpleArray* list = listOf(id);
    if (list && removeFrom(*list, listener) && isDeletionID(id)) --deletionListeners_;
}

void BroadcasterData::removeFromEveryID(Listener& listener) {
    for (long long word : ids_) {
        const int id = static_cast<int>(word);
        if (removeFrom(*listOf(id), listener) && isDeletionID(id)) --deletionListeners_;
    }
    hasEmptyLists_ = true;
    dropEmptyLists();
}

/// Not while a delivery may be walking one of the lists; the last one to end calls this again.
void BroadcasterData::dropEmptyLists() {
    if (deliveries_ > 0 || !hasEmptyLists_) return;
    hasEmptyLists_ = false;
    lastList_ = nullptr;
    for (int i = ids_.length() - 1; i >= 0; --i) {
        const long long id = std::as_const(ids_)[i];
        SimpleArray* list = pointerOf<SimpleArray>(byID_.find(id));
        if (list->length() > 0) continue;
        byID_.remove(id);
        ids_.removeAt(i);
        delete list;
    }
}

bool BroadcasterData::isListening(int id) const {
    if (allListeners_.length() > 0) return true;
    const SimpleArray* list = listOf(id);
    return list && list->length() > 0;
}

bool BroadcasterData::deliver(Message& message) {
    SimpleArray* list = listOf(message.getID());
    if (list && deliverTo(*list, message)) return true;
    return !isAbandoned_ && deliverTo(allListeners_, message);
}

bool BroadcasterData::deliverTo(SimpleArray& list, Message& message) {
    NotifiedListeners notified;
    const unsigned changesBefore = changes_;
    for (int position = 0; position < list.length();) {
        Listener* listener = pointerOf<Listener>(std::as_const(list)[position]);
        // Nobody stands in a list twice, so without a change there is nobody to recognise.
        if (changes_ != changesBefore && notified.contains(listener)) {
            ++position;
            continue;
        }
        notified.add(listener);
        const int lengthBefore = list.length();
        if (listener->notify(message)) return true;
        if (isAbandoned_) return false;
        // When the list got shorter, the next listener has moved to this position.
        if (list.length() >= lengthBefore) ++position;
    }
    return false;
}

bool BroadcasterData::endDelivery() {
    if (--deliveries_ > 0) return false;
    if (isAbandoned_) return true;
    dropEmptyLists();
    return false;
}

bool BroadcasterData::abandon() {
    isAbandoned_ = true;
    return deliveries_ == 0;
}

} // namespace KrCore
