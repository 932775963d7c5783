#pragma once

#include <krcore/live/InfoType.h>
#include <krcore/live/LiveBase.h>

namespace KrCore {

class Array;
class LiveObject;
class ServiceInfo;
class SimpleArray;
class Variant;

/// A piece of behaviour that a host attaches to live objects (`LiveObject::addComponent`):
/// properties, methods and, when indexable, elements. The object asks its components after its own
/// dynamic properties and its class's manager, the one added last first, each with its lock held
/// and counted for the length of the call, so a component may detach itself.
///
/// Every operation receives the owning object; one component may serve several. Components that
/// objects of several threads share must not call the object or record errors on it: that asks its
/// other components, each under its lock, while this one's is held. Results are error
/// codes (0 success) unless said otherwise. What a component knows may change at any time; it then
/// calls `propertyDefsChanged()` of its owners.
class KR_API LiveComponent : public LiveBase {
public:
    /// Called by the owner's `reset`. The base does nothing.
    virtual void reset();

    /// The base of this and the next four asks the manager, under the manager's lock, and knows
    /// nothing without one. Here an empty name is not asked for: ID 0, `InfoType::Unknown`, 2. A
    /// kind of `InfoType::Hidden` is taken for 2.
    virtual int getIDForName(const LiveObject& owner, const String& name, int& id, InfoType& kind,
                             int flags) const;
    virtual int getNameForID(const LiveObject& owner, int id, String& name, int flags) const;
    virtual InfoType getType(const LiveObject& owner, int id);
    virtual bool hasOperators() const;
    /// Appends IDs; those that are listed already are dropped by the owner.
    virtual int enumerate(const LiveObject& owner, SimpleArray& ids, int flags) const;

    /// The record of a property for reflection, with a reference for the caller; null when there is
    /// none. The base asks the manager.
    virtual const ServiceInfo* getServiceInfo(const LiveObject& owner, int id, int flags) const;

    /// The base of these three knows no property: it records 2 on the owner (`call`: on `self`),
    /// empties the result and returns 2.
    virtual int get(const LiveObject& owner, int id, Variant& result, Error* err) const;
    virtual int put(LiveObject& owner, int id, const Variant& value, Error* err);
    /// `self` is the script's `this`; of the owner's class unless the method is generic.
    virtual int call(LiveObject& self, int id, const Array& args, Variant& result, Error* err);

    /// True lets a method be called with a `this` of another class. The base returns false.
    virtual bool isGeneric(int id) const;

    /// True when the component keeps elements; the five operations below are asked for then only.
    virtual bool isIndexable() const;
    /// The base gives length 0 and returns 2.
    virtual int getLength(const LiveObject& owner, unsigned& length) const;
    /// The base returns 2.
    virtual int putLength(LiveObject& owner, unsigned length);
    /// The base of these two records 41 on the owner and returns it.
    virtual int getByIndex(const LiveObject& owner, unsigned index, Variant& result,
                           Error* err) const;
    virtual int putByIndex(LiveObject& owner, unsigned index, const Variant& value, Error* err);
    /// The base returns 0.
    virtual int deleteByIndex(LiveObject& owner, unsigned index);

protected:
    LiveComponent();
    ~LiveComponent() override;
};

} // namespace KrCore
