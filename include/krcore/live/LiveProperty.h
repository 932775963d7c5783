#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Root.h>
#include <krcore/live/InfoType.h>
#include <krcore/live/PropertyFlags.h>
#include <krcore/text/String.h>
#include <krcore/values/Variant.h>

#include <cstdint>

namespace KrCore {

class Array;
class Error;
class LiveObject;

/// One dynamic property of one live object. The object owns it and deletes it. A class that wants
/// records with a behaviour of their own derives from this one and overrides
/// `LiveObject::createProperty`.
class KR_API LiveProperty : public Root {
public:
    /// The value starts undefined. Kind 0 becomes read/write. Kinds 1, 5 and 7 get one write, their
    /// initialisation.
    LiveProperty(LiveObject& owner, const String& name, int id, unsigned flags);
    ~LiveProperty() override;

    /// A new record with the same name, ID, flags and value for another object, which owns it. A
    /// derived class makes one of its own kind.
    virtual LiveProperty* copyFor(LiveObject& owner) const;
    /// The record has left its object and will be deleted next; there is no owner any more.
    virtual void detached();

    virtual int get(Variant& value) const;
    /// 46 when the record is of a kind that is not written (bit 0) and has had its one write.
    virtual int put(const Variant& value);
    /// Stores a value whatever the kind: the library's copy of what a listener keeps.
    void setValue(const Variant& value);
    /// Empties the result and returns 24.
    virtual int call(LiveObject& self, const Array& args, Variant& result, Error* err);

    /// Borrowed; null once detached.
    LiveObject* getOwner() const { return owner_; }
    const String& getName() const { return name_; }
    /// The place in the order of creation within the object.
    int getLocalIndex() const { return localIndex_; }
    int getID() const { return id_; }
    unsigned getFlags() const { return flags_; }
    InfoType getKind() const { return static_cast<InfoType>(flags_ & PropertyFlag::KindMask); }
    bool has(int flag) const { return (flags_ & static_cast<unsigned>(flag)) != 0; }

private:
    friend class DynamicProperties;
    void takeValue(Variant& content);

    LiveObject* owner_;            // borrowed
    LiveProperty* next_ = nullptr; // towards the least recently used
    String name_;
    int localIndex_ = 0;

protected:
    Variant value_;

private:
    int id_;
    unsigned flags_;
    // What the object's list and indexes need.
    LiveProperty* previous_ = nullptr;
    LiveProperty* nextByName_ = nullptr;
    LiveProperty* nextByID_ = nullptr;
    std::uint64_t recency_ = 0; // the larger, the more recently used
    std::uint32_t nameHash_ = 0;
};

} // namespace KrCore
