#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/foundation/Lockable.h>
#include <krcore/foundation/Root.h>
#include <krcore/live/InfoType.h>

namespace KrCore {

class LivePropertyManagerImpl;
class ServiceInfo;
class SimpleArray;
class String;
struct LivePropertyInfo;

/// Knows the properties that a class declares: their names, IDs and kinds. One manager serves all
/// instances of a class and outlives them; values are the class's own business.
///
/// A manager made over a table answers from that table. The first registration makes it copy the
/// table's rows into tables of its own, to which rows can be added from then on.
///
/// It does no locking: whoever calls it from more than one thread holds its lock (`Lockable`), as
/// live objects do. Results are 0 (found) or `ErrorCode::NotFound` unless said otherwise.
class KR_API LivePropertyManager : public Root, public Lockable {
public:
    /// Over a table that ends with a null name. Borrowed: it is not copied, must outlive the
    /// manager and stay as it is. Null is an empty table.
    explicit LivePropertyManager(const LivePropertyInfo* table);
    LivePropertyManager();
    ~LivePropertyManager() override;

    /// An empty name is not found. A miss gives ID 0 and `InfoType::Unknown`.
    virtual int getIDForName(const String& name, int& id, InfoType& kind, int flags) const;
    /// A miss empties the name. Of several names of one ID: the first row of a table, else the one
    /// registered first that is still there.
    virtual int getNameForID(int id, String& name, int flags) const;
    /// Whatever the languages that see the property.
    virtual InfoType getType(int id);
    /// Appends the IDs of the properties that the request (`RequestFlag`) asks for: a table's in
    /// the order of its rows, registered ones by ascending ID. Returns 0.
    virtual int enumerate(SimpleArray& ids, int flags) const;

    /// The record of the constructor, the first row without a name: a method with ID 0, named after
    /// the type that its descriptor starts with. Null when the language sees none. These records
    /// are new ones, with a reference for the caller, and live on without the manager.
    virtual const ServiceInfo* getConstructor(int flags) const;
    /// The record of a property that the language sees, else null.
    virtual const ServiceInfo* getServiceInfo(const String& name, int flags) const;
    virtual const ServiceInfo* getServiceInfo(int id, int flags) const;

    /// Whether any ID lies in the operator range.
    bool hasOperators() const;

    /// Adds every row of a table, which is copied. Null adds nothing.
    void registerProperties(const LivePropertyInfo* table);
    void registerProperty(const LivePropertyInfo& row);
    /// Adds one property. A known name moves to the new ID, and its old ID stays known; a known ID
    /// keeps its kind and flags and only gains the new row's languages (so a row that all languages
    /// saw, having none, is from then on seen by these only). A null name adds nothing.
    void registerProperty(const char* name, int id, int flags, const char* descriptor);

    /// Advances with every registration, so that a cache of IDs can tell that it is old.
    unsigned getDefinitionStamp() const { return definitionStamp_; }

private:
    void becomeDynamic();

    LivePropertyManagerImpl* impl_; // owned
    unsigned definitionStamp_ = 0;
};

} // namespace KrCore
