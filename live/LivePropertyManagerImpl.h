#pragma once

#include <krcore/foundation/Root.h>
#include <krcore/live/InfoType.h>
#include <krcore/live/PropertyFlags.h>

namespace KrCore {

class ServiceInfo;
class SimpleArray;
class String;
struct LivePropertyInfo;

/// Where a manager's answers come from: a table of the class's, or registered properties.
class LivePropertyManagerImpl : public Root {
public:
    ~LivePropertyManagerImpl() override;
    virtual void registerProperty(const char* name, int id, int flags, const char* descriptor) = 0;
    virtual void registerProperties(const LivePropertyInfo* table) = 0;
    virtual int getIDForName(const String& name, int& id, InfoType& kind, int flags) const = 0;
    virtual int getNameForID(int id, String& name, int flags) const = 0;
    virtual InfoType getType(int id) const = 0;
    virtual int enumerate(SimpleArray& ids, int flags) const = 0;
    virtual const ServiceInfo* getConstructor(int flags) const = 0;
    virtual const ServiceInfo* getServiceInfo(const String& name, int flags) const = 0;
    virtual const ServiceInfo* getServiceInfo(int id, int flags) const = 0;
    /// The static table, or null when the properties are registered ones.
    virtual const LivePropertyInfo* getTable() const = 0;

    bool hasOperators() const { return hasOperators_; }

protected:
    /// To be told of every ID.
    void noteID(int id);

private:
    bool hasOperators_ = false;
};

/// The rules by which a request sees a row, the same for both kinds of tables.

inline InfoType kindOf(int rowFlags) {
    return static_cast<InfoType>(rowFlags & PropertyFlag::KindMask);
}

inline bool isVisible(int rowFlags, int request) {
    const int languages = rowFlags & PropertyFlag::LanguageMask;
    return languages == 0 || (languages & request) != 0;
}

/// Managers compare names without case for exactly one language; dynamic properties of an object
/// look at its bit alone.
inline bool ignoresCase(int request) {
    return (request & PropertyFlag::LanguageMask) == RequestFlag::IgnoreCase;
}

/// Whether an enumeration lists a row: kind, hidden classes and language.
bool isListed(int rowFlags, int request);

} // namespace KrCore
