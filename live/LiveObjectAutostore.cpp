#include <krcore/live/LiveObject.h>

#include "foundation/LockSlots.h"
#include "live/LiveObjectData.h"
#include "live/ScopedLock.h"
#include "live/ScopedMark.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/messages/Message.h>

namespace KrCore {

void LiveObject::setAutostore(LiveObject* target, int id) const {
    if (!data_) return;
    LiveObject* const previous = data_->autostoreTarget;
    auto& listener = *const_cast<LiveObject*>(this);
    const bool changes = target != previous;
    // Listening takes the target's lock, so it stays outside the library's; the new target is
    // listened to first, because only that can fail.
    if (changes && target) target->addListener(listener, MessageID::Deleted);
    {
        LibraryLock guard(LockSlot::LiveObjects);
        data_->autostoreTarget = target;
        data_->autostoreID = id;
    }
    if (changes && previous) previous->removeListener(listener, MessageID::Deleted);
}

int LiveObject::invokeAutostore(Error* err) {
    if (!data_ || !data_->autostoreTarget || data_->isAutostoring) return ErrorCode::Ok;
    // A dying target has not told this object yet when a listener before it writes here.
    if (data_->autostoreTarget->getRefCount() < 0) return ErrorCode::Ok;
    const InterfacePtr<LiveObject> target(data_->autostoreTarget);
    const ScopedMark mark(data_->isAutostoring);
    ScopedLock guard(*target);
    return target->put(data_->autostoreID, Variant(*this), err);
}

bool LiveObject::notify(Message& message) {
    // The target is half gone by now: its address may be compared, nothing more.
    if (data_ && data_->autostoreTarget && message.getID() == MessageID::Deleted &&
        message.getSender() == data_->autostoreTarget) {
        LibraryLock guard(LockSlot::LiveObjects);
        data_->autostoreTarget = nullptr;
        data_->autostoreID = 0;
    }
    return false;
}

} // namespace KrCore
