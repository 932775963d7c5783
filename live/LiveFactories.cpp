#include "foundation/LockSlots.h"
#include "foundation/ModuleHooks.h"
#include "live/PointerWord.h"

#include <krcore/containers/HashTable.h>
#include <krcore/containers/SparseArray.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/LiveObject.h>

#include <memory>

namespace KrCore {

namespace {

/// One registered factory. Up to two tables lead to it.
class FactoryInfo : public Root {
public:
    FactoryInfo(LiveObject& object, const String& className, int id, int requestFlags)
        : factory(&object), name(className), classID(id), flags(requestFlags) {}

    InterfacePtr<LiveObject> factory;
    String name;
    int classID; // 0 when it is not in the table of IDs
    int flags;
};

/// The factories by name, which owns them, and by class ID. Its callers hold the lock.
class FactoryRegistry : public Root {
public:
    ~FactoryRegistry() override {
        SimpleArray infos;
        byName_.getData(infos);
        for (long long info : infos)
            delete pointerOf<FactoryInfo>(info);
    }

    FactoryInfo* find(const String& name) const {
        return pointerOf<FactoryInfo>(byName_.find(name, false));
    }
    FactoryInfo* find(int classID) const { return pointerOf<FactoryInfo>(byID_.find(classID)); }

    /// Returns the factory of that name that was there before, which the caller deletes.
    [[nodiscard]] FactoryInfo* add(std::unique_ptr<FactoryInfo> info) {
        FactoryInfo* previous = find(info->name);
        enter(*info);
        if (previous && previous->classID != info->classID) forgetID(*previous);
        if (info->classID) {
            if (FactoryInfo* other = find(info->classID)) other->classID = 0;
            byID_.set(info->classID, wordOf(info.get()));
        }
        info.release();
        return previous;
    }

    /// Returns the factory, which the caller deletes, or null.
    [[nodiscard]] FactoryInfo* remove(const String& name) {
        FactoryInfo* info = pointerOf<FactoryInfo>(byName_.remove(name, false));
        if (info) forgetID(*info);
        return info;
    }

private:
    /// Makes the place in both tables, the only step that can fail, and fills that of the name.
    void enter(FactoryInfo& info) {
        // An ID without a factory reads as 0.
        const bool isNewID = info.classID && !byID_.hasKey(info.classID);
        if (isNewID) byID_.set(info.classID, 0);
        try {
            byName_.set(info.name, wordOf(&info), false);
        } catch (...) {
            if (isNewID) byID_.remove(info.classID);
            throw;
        }
    }

    void forgetID(const FactoryInfo& info) {
        if (info.classID) byID_.remove(info.classID);
    }

    HashTable byName_;
    SparseArray byID_;
};

constinit FactoryRegistry* registry = nullptr; // made by the first addFactory

/// The factory with a reference of the caller's, if it serves these flags.
template <class Key>
InterfacePtr<LiveObject> findFactory(const Key& key, int flags) {
    LibraryLock guard(LockSlot::LiveObjects);
    const FactoryInfo* info = registry ? registry->find(key) : nullptr;
    return info && (info->flags & flags) ? info->factory : nullptr;
}

int createFrom(const InterfacePtr<LiveObject>& factory, LiveObject** result) {
    *result = nullptr;
    return factory ? factory->clone(result, false) : ErrorCode::NotAnObject;
}

} // namespace

void stopLiveObjects() {
    FactoryRegistry* leaving = registry;
    registry = nullptr;
    delete leaving;
}

int LiveObject::addFactory(LiveObject& factory, int flags) {
    if (!factory.isUsable()) return ErrorCode::ObjectInvalid;
    auto info = std::make_unique<FactoryInfo>(factory, factory.getClassName(),
                                              factory.getObjectID(), flags);
    std::unique_ptr<FactoryInfo> previous; // goes when the lock is given up
    LibraryLock guard(LockSlot::LiveObjects);
    if (!registry) registry = new FactoryRegistry;
    previous.reset(registry->add(std::move(info)));
    return ErrorCode::Ok;
}

int LiveObject::removeFactory(const String& className) {
    std::unique_ptr<FactoryInfo> removed; // goes when the lock is given up
    LibraryLock guard(LockSlot::LiveObjects);
    if (registry) removed.reset(registry->remove(className));
    return removed ? ErrorCode::Ok : ErrorCode::NotFound;
}

LiveObject* LiveObject::getFactory(const String& className, int flags) {
    return findFactory(className, flags).get();
}

LiveObject* LiveObject::getFactory(int classID, int flags) {
    return findFactory(classID, flags).get();
}

int LiveObject::create(LiveObject** result, const String& className, int flags) {
    return createFrom(findFactory(className, flags), result);
}

int LiveObject::create(LiveObject** result, int classID, int flags) {
    return createFrom(findFactory(classID, flags), result);
}

int LiveObject::createLocal(LiveObject** result, const String& className, int flags) {
    return create(result, className, flags);
}

} // namespace KrCore
