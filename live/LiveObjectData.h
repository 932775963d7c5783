#pragma once

#include "live/DynamicProperties.h"

#include <krcore/containers/Array.h>
#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/foundation/Root.h>
#include <krcore/live/ClassInfo.h>
#include <krcore/values/Variant.h>

namespace KrCore {

class CloneSession;
class LiveObject;

/// The private state of one live object.
class LiveObjectData : public Root {
public:
    LiveObjectData() = default;
    ~LiveObjectData() override;

    /// Destroys the block of an object that is gone. Objects that die with its properties hand in
    /// their blocks meanwhile and are served in turn: a list of a hundred thousand objects, each
    /// held by a property of the one before, must not need as many stack frames.
    static void end(LiveObjectData* data);

    SimpleArray components;                // counted LiveComponent*, the one added last at the end
    LiveObject* autostoreTarget = nullptr; // borrowed; it tells when it dies
    int autostoreID = 0;
    bool isAutostoring = false;
    bool isFormingText = false;
    DynamicProperties properties;
    InterfacePtr<const ClassInfo> classInfo; // made when it is asked for
    Variant* value = nullptr;                // owned; made when it is asked for
    Array leftElements;                      // of an object that is ending
    int objectID = 0;
    unsigned definitionStamp = 0;
    Root* hostData = nullptr;             // borrowed
    CloneSession* cloneSession = nullptr; // the deep clone that is copying the object
    LiveObjectData* nextEnding = nullptr;
};

} // namespace KrCore
