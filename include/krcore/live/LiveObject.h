#pragma once

#include <krcore/live/InfoType.h>
#include <krcore/live/LiveBase.h>
#include <krcore/live/PropertyFlags.h>
#include <krcore/live/PropertyID.h>
#include <krcore/messages/Broadcaster.h>
#include <krcore/messages/Listener.h>
#include <krcore/text/String.h>

namespace KrCore {

class Array;
class ClassInfo;
class CloneSession;
class LiveComponent;
class LiveObjectData;
class LiveProperty;
class ServiceInfo;
class SimpleArray;
class Variant;
template <class T>
class InterfacePtr;

/// An object of the host as scripts see it: named properties and methods, reached by integer IDs.
///
/// A name is resolved by, in this order, the object's own dynamic properties, its class's property
/// manager, its components (last added first) and, for a dynamic object, listeners of 'loGi'.
/// Values are answered by ID, by the dynamic property with that ID, by a component, or by a derived
/// class that overrides `get`, `put` and `call` for the properties of its manager and
/// leaves the rest to this class. It also says `using LiveObject::get;` and so on, or the override
/// hides the forms by name.
///
/// Results are error codes unless said otherwise: 0 success, 2 not found, 45 when the object is
/// invalid; names and values that would have been returned are empty then. A failure is also
/// recorded into an `Error` that is given and empty. One thread uses an object at a time, and
/// whoever calls it holds a reference meanwhile.
class KR_API LiveObject : public LiveBase, public Broadcaster, public Listener {
public:
    /// `dynamic` objects take new properties by name.
    LiveObject(const String& className, bool dynamic);
    LiveObject(const char* className, bool dynamic);
    LiveObject(const LiveObject&) = delete; // `clone` copies
    LiveObject& operator=(const LiveObject&) = delete;

    /// Answers `TypeTag::Object` and `TypeTag::Value`; asking for the value creates it.
    const void* getAs(int tag) const override;
    void* getAs(int tag) override;
    void invalidate() override;
    void revalidate() override;

protected:
    /// A new record for this object, owned by the caller; null when memory is exhausted. Overridden
    /// by classes whose dynamic properties have a behaviour of their own.
    virtual LiveProperty* createProperty(const String& name, int id, unsigned flags);

public:
    /// A new object for a nested literal; the base forwards to the static `create`. The result
    /// carries a reference.
    virtual int createLocal(LiveObject** result, const String& className, int flags);

    /// A new plain object with this object's class name, dynamic properties and components (the
    /// same ones, shared). `deep` also clones the objects that its properties refer to, each once,
    /// so rings stay rings; objects inside arrays are shared. More than 512 objects deep is refused
    /// with 27. The result carries a reference; null after a failure. A class with members of its
    /// own overrides this and calls `cloneContent`.
    virtual int clone(LiveObject** result, bool deep) const;

    /// Called after a script has constructed the object, with the constructor's arguments. The base
    /// does nothing.
    virtual int initialize(const Array& args, Error* err);

    /// The name given at construction; an empty one becomes "Object".
    virtual const String& getClassName() const;

    /// Whether both are valid and have the same class name, object ID, autostore target and ID, and
    /// the same components; properties are not compared.
    virtual bool operator==(const LiveObject& other) const;

    /// A pointer of the host's, kept and not looked at. Borrowed.
    virtual void setData(Root* data);
    virtual Root* getData() const;

    /// Attaches a component, which is counted. One that is attached already stays where it is.
    virtual int addComponent(LiveComponent& component);
    /// Detaches and releases; a component that is not attached is ignored (0).
    virtual int removeComponent(LiveComponent& component);

    /// A miss gives ID 0 and `InfoType::Unknown`.
    virtual int getIDForName(const String& name, int& id, InfoType& kind, int flags) const;
    /// Defines a dynamic property under a new ID.
    virtual int createIDForName(const String& name, int& id, int flags);
    /// Defines a dynamic property (`PropertyFlag`): 55 when the object is not dynamic, 40 when the
    /// name is taken by another dynamic property.
    virtual int defineIDForName(const String& name, int id, int flags);
    virtual int getNameForID(int id, String& name, int flags) const;

    /// Deletes the dynamic properties, the permanent ones with `all` only.
    virtual int deleteDynamicProperties(bool all);

    /// Whether an operator was defined as dynamic property or declared by the class. Components
    /// count only after a `reset`; deleting the property does not take the answer back.
    virtual bool hasOperators() const;

    /// Deletes the dynamic property; 2 also for a permanent one. Of several with this ID the one
    /// used last is meant.
    virtual int deleteID(int id);

    /// Deletes all dynamic properties and resets the components.
    virtual int reset();

    /// Appends the IDs that the request (`RequestFlag`) asks for and that are not in the array yet:
    /// dynamic properties in the order of their creation, then the class's, then those of
    /// components. IDs that a component hides are taken out, also those that were there before.
    /// Then listeners of 'loEn' may add theirs, unchecked; their failure is returned.
    virtual int enumerate(SimpleArray& ids, int flags) const;

    /// The kind of an ID; `InfoType::Unknown` when nobody knows it or the object is invalid.
    virtual InfoType getType(int id);

    /// The description of the class for reflection, with a reference for the caller; null when the
    /// object is invalid. `flags` is a request with the language that asks. The record is kept for
    /// the next caller until properties are defined or deleted, or `propertyDefsChanged` is called.
    /// A class that has more to say returns a record of its own; see `LiveObjectClassInfo`.
    virtual const ClassInfo* getClassInfo(int flags) const;

    virtual int get(int id, Variant& result, Error* err) const;
    /// A read-only dynamic property takes one write; further ones give 46. When the property's
    /// value is kept by a listener, the write goes there and the stored copy stays as it was.
    virtual int put(int id, const Variant& value, Error* err);
    /// `apply` with this object as the script's `this`.
    virtual int call(int id, const Array& args, Variant& result, Error* err);
    /// Calls a method with an explicit `this`: 24 when the ID is no method, 26 when `self` is of
    /// another class and the method does not allow that.
    virtual int apply(LiveObject& self, int id, const Array& args, Variant& result,
                      Error* err) const;

    /// The answer of the method "valueOf", else the object's value, else undefined. 0 or 45.
    virtual int valueOf(Variant& result) const;
    /// The answer of the method "toString", else "[object " + class name + "]", which is also the
    /// text when that method leads to a text of this object. 0 or 45.
    virtual int toString(String& result) const;

    /// Watches the autostore target; never consumes a message. A derived class calls it from its
    /// own.
    bool notify(Message& message) override;

    // By name. A name that is not found is recorded with the name as text; 55 is a property that
    // cannot be read, 46 one that cannot be written, 24 one that cannot be called.
    int get(const String& name, Variant& result, Error* err) const;
    /// An unknown name is defined with `createFlags` as read/write property, unless they are -1.
    int put(const String& name, const Variant& value, int createFlags, Error* err);
    int call(const String& name, Error* err);
    int call(const String& name, Variant& result, Error* err);
    int call(const String& name, const Array& args, Error* err);
    int call(const String& name, const Array& args, Variant& result, Error* err);

    int call(int id);
    int call(int id, Variant& result);
    int call(int id, const Array& args);

    /// Asks the listeners of 'loIn' to run a method, whatever this object's own properties: 24 when
    /// nobody listens or nobody answers. An error that a listener recorded into `err` is the
    /// result.
    int invoke(const String& name, Error* err) const;
    int invoke(const String& name, Variant& result, Error* err) const;
    int invoke(const String& name, const Array& args, Error* err) const;
    int invoke(const String& name, const Array& args, Variant& result, Error* err) const;
    /// Whether anybody listens for such calls.
    bool canInvoke(const String& name) const;

    /// The dynamic property, which becomes the most recently used one; null when there is none.
    /// Borrowed until the next change of the object's properties.
    LiveProperty* findProperty(int id) const;

    /// The next component behind `after` (null: from the start), last added first, that knows the
    /// ID; null when there is none, or when it detaches itself while it is asked. Borrowed from
    /// this object until the component is detached.
    LiveComponent* getComponent(int id, const LiveComponent* after) const;

    /// A number of the host's, 0 at first.
    int getObjectID() const;
    void setObjectID(int id);

    /// After every successful `put` this object writes itself into property `id` of the target,
    /// until the target dies. Null ends that. The target is not counted.
    void setAutostore(LiveObject* target, int id) const;

    /// Says that properties of the class, of components or of listeners have changed; what was
    /// learned about names and IDs is looked up again.
    void propertyDefsChanged() const;

    /// Advances whenever names or IDs may have changed their meaning: dynamic properties that come
    /// or go, components, registrations at the manager, validity, `propertyDefsChanged`. An engine
    /// may keep the ID of a name, and that there is none, for as long as this number stays the
    /// same.
    unsigned getDefinitionStamp() const;

    /// Reads an object literal and writes each of its pairs into this object; see `parseNew`.
    /// A class name in the text must be this object's (26). Pairs before a failure stay written.
    int parse(const String& text, Error& err, int flags);
    int parse(const String& text, int flags);

    /// Makes an object from a literal: an optional class name and `{name: value, ...}`, where a
    /// name is an identifier or a string and a value is another object, an array `[value, ...]`, a
    /// string, null, true, false, or else a number. `flags` select the factories; a class without
    /// one is 21, except "Object", which is also meant when no class is named. Failures: 25 where
    /// something else was expected, 8 for text behind the literal, 27 for more than 512 levels; the
    /// error carries the line, counted from 1. The result carries a reference; null after a
    /// failure.
    static int parseNew(const String& text, LiveObject*& result, int flags);
    static int parseNew(const String& text, LiveObject*& result, Error& err, int flags);

    /// Registers an object that makes others of its class: `create` clones it. It is found by its
    /// class name and, unless that is 0, by its object ID as class ID, when the flags of the
    /// request share a bit with these. Counted; a second one of the same name replaces the first.
    /// Any thread.
    static int addFactory(LiveObject& factory, int flags);
    /// Borrowed from the registry; null when there is none for these flags.
    static LiveObject* getFactory(const String& className, int flags);
    static LiveObject* getFactory(int classID, int flags);
    static int removeFactory(const String& className);
    /// The result carries a reference; null and 21 without a factory.
    static int create(LiveObject** result, const String& className, int flags);
    static int create(LiveObject** result, int classID, int flags);

protected:
    ~LiveObject() override;

    /// The component that knows the ID, or that keeps elements; the last added one. Null for none.
    LiveComponent* lookupComponent(int id) const;
    LiveComponent* lookupIndexableComponent() const;

    /// Writes this object into its autostore target, if there is one. While that goes on, further
    /// calls do nothing, so rings of targets end. A derived class with storage of its own calls it
    /// after a successful change.
    int invokeAutostore(Error* err);

    /// Whether the object is valid and had memory for its state.
    bool isUsable() const { return data_ && isValid(); }

    /// For destructors: destroys `content` together with the object's properties, so that a chain
    /// of objects that hold each other in arrays ends without a stack frame for each. It leaves
    /// `content` empty. The derived class is gone by then: what lies in `content` must not call the
    /// object from its destructor.
    void endWithObject(Array& content);

    /// Copies class name, dynamic properties and components into an object that has just been made;
    /// see `clone`.
    int cloneContent(LiveObject& to, bool deep) const;

private:
    friend class LiveObjectClassInfo;
    friend class LiveCollection;
    LiveProperty* addProperty(const String& name, int id, unsigned flags, unsigned extraFlags);
    int askListenersForName(const String& name, int& id, InfoType& kind, int flags) const;
    int cloneReferences(LiveObject& copy) const;
    int cloneWithin(CloneSession& session, InterfacePtr<LiveObject>& copy) const;
    const ServiceInfo* getDeclaration(const String& name, int id, int flags) const;
    const ServiceInfo* getDeclaredConstructor(int flags) const;

    LiveObjectData* data_ = nullptr; // owned; null when memory was exhausted
    mutable unsigned flags_;

protected:
    mutable String className_; // empty until asked for when none was given
};

} // namespace KrCore
