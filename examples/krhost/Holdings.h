#pragma once

#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/InfoType.h>
#include <krcore/live/LiveCollection.h>

#include <array>
#include <cstdint>

namespace krhost {

/// What a script object holds in the library. The script object keeps a pointer to it and its
/// finalizer drops it; it is deleted a little later, between two calls, because the host's code
/// that may run then must not run inside the collector.
struct Holding {
    explicit Holding(KrCore::LiveObject& held) : object(&held) {}
    virtual ~Holding() = default;

    KrCore::InterfacePtr<KrCore::LiveObject> object; // one counted reference
    Holding* nextDropped = nullptr;
};

/// A property as the object resolved its name.
struct Resolved {
    int id = 0;
    KrCore::InfoType kind = KrCore::InfoType::Unknown;

    bool operator==(const Resolved&) const = default;
};

/// The holding of the script object that stands for a live object.
struct HeldObject : Holding {
    explicit HeldObject(KrCore::LiveObject& held)
        : Holding(held), collection(as<KrCore::LiveCollection>(KrCore::TypeTag::Collection)),
          elements(as<KrCore::Array>(KrCore::TypeTag::ArrayElements)) {}

    /// A name that was resolved. Names are strings of the engine, which has each text once, so
    /// their address stands for them; the script object keeps them from being collected.
    struct CachedName {
        const void* name = nullptr;
        Resolved property;
    };
    static constexpr unsigned cacheSize = 8;

    static unsigned cacheSlot(const void* name) {
        const auto address = reinterpret_cast<std::uintptr_t>(name);
        return static_cast<unsigned>((address >> 4U ^ address >> 8U) % cacheSize);
    }

    void* scriptObject = nullptr; // borrowed: the script object takes itself out when it goes
    bool hasNote = false;         // whether script objects were written into its properties
    bool hasElementNote = false;  // whether any were written into `elements`
    unsigned stamp = 0;           // the object's definition stamp when the names were resolved
    std::array<CachedName, cacheSize> names;

    // The object by other names, borrowed from it.
    KrCore::LiveCollection* collection; // null when it has no elements
    KrCore::Array* elements;            // null unless they are in the object

private:
    template <class Type>
    Type* as(int tag) const {
        return static_cast<Type*>(object->getAs(tag));
    }
};

/// The holding of a function that stands for a method or a callable property of a live object.
struct HeldMethod : Holding {
    HeldMethod(KrCore::LiveObject& held, Resolved method) : Holding(held), property(method) {}

    Resolved property;
};

} // namespace krhost
