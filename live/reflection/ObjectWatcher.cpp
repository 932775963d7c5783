#include <krcore/live/ObjectWatcher.h>

#include <krcore/live/LiveObject.h>
#include <krcore/messages/Message.h>

namespace KrCore {

ObjectWatcher::ObjectWatcher(LiveObject& object) : object_(&object) {
    object.addListener(*this, MessageID::Deleting);
}

ObjectWatcher::~ObjectWatcher() {
    if (object_) object_->removeListener(*this, MessageID::Deleting);
}

bool ObjectWatcher::notify(Message& message) {
    // The object is half gone by now: its address may be compared, nothing more.
    if (message.getID() == MessageID::Deleting && message.getSender() == object_) object_ = nullptr;
    return false;
}

InterfacePtr<LiveObject> ObjectWatcher::getObject() const {
    // A dying object calls its listeners before it has told all of them.
    const bool isAlive = object_ && object_->getRefCount() > 0;
    return InterfacePtr<LiveObject>(isAlive ? object_ : nullptr);
}

} // namespace KrCore
