#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/messages/Listener.h>

namespace KrCore {

class LiveObject;

/// Whoever knows a live object without keeping it alive derives from this class. It listens for the
/// object's end and forgets it then. Used by the thread that uses the object.
class KR_API ObjectWatcher : public Listener {
public:
    ObjectWatcher(const ObjectWatcher&) = delete;
    ObjectWatcher& operator=(const ObjectWatcher&) = delete;

    /// Forgets the object when it dies; consumes nothing.
    bool notify(Message& message) override;

protected:
    explicit ObjectWatcher(LiveObject& object);
    ~ObjectWatcher() override;

    /// The object, counted for as long as it is worked with; null once it is gone or going.
    InterfacePtr<LiveObject> getObject() const;

private:
    LiveObject* object_; // borrowed; it tells when it dies
};

} // namespace KrCore
