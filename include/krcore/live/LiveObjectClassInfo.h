#pragma once

#include <krcore/foundation/WeakRef.h>
#include <krcore/live/ClassInfo.h>
#include <krcore/live/InfoType.h>
#include <krcore/text/String.h>

namespace KrCore {

class LiveObject;

/// Describes the class of one live object from what the object itself knows: its own dynamic
/// properties, those its class declares, those of its components and listeners.
///
/// The object is referred to weakly. When it dies its name stays, and there are no members any
/// more; an invalid object has none either. A host that has more to say about its class (a
/// superclass, descriptions, samples, that it is an enumeration) derives from this one and returns
/// its own from `LiveObject::getClassInfo`. The members of an enumeration are class-level ones.
class KR_API LiveObjectClassInfo : public ClassInfo {
public:
    /// `flags` is a request with the language for which names are looked up.
    LiveObjectClassInfo(LiveObject& object, int flags);

    int getLanguage() const override;
    bool getName(String& name) const override;
    bool enumerateNames(SimpleArray& names, int flags) const override;
    bool enumerate(SimpleArray& ids, int flags) const override;
    const ServiceInfo* getServiceInfo(const String& name) const override;
    const ServiceInfo* getServiceInfo(int id) const override;
    const ServiceInfo* getStaticServiceInfo(const String& name) const override;
    const ServiceInfo* getStaticServiceInfo(int id) const override;

protected:
    ~LiveObjectClassInfo() override;

    /// The object, for as long as it is worked with; null once it is gone.
    InterfacePtr<LiveObject> getObject() const;

private:
    bool isEnumeration() const;
    InterfacePtr<LiveObject> ownerOfMembers(int level) const;
    const ServiceInfo* makeConstructor() const;
    const ServiceInfo* makeMember(const String& name, int level) const;
    const ServiceInfo* makeMember(int id, int level) const;
    const ServiceInfo* makeService(LiveObject& object, const String& name, int id,
                                   InfoType kind) const;

    WeakRef<LiveObject> object_;
    String className_;
    int language_;
};

} // namespace KrCore
