#pragma once

#include <krcore/live/LiveObjectClassInfo.h>
#include <krcore/live/TypeInfo.h>

#include <memory>

namespace KrCore {
class LivePropertyManager;
class PropertyManagerClassInfo;
} // namespace KrCore

namespace krhost {

/// What a host class says of itself beside its table. Types are written as in that table.
struct ClassTexts {
    using Declaration = KrCore::LivePropertyManager* (*)();

    const char* description;
    const char* details = "";
    const char* sample = "";
    KrCore::InfoState state = KrCore::InfoState::Ordinary;
    const char* elements = nullptr;   ///< The type of the elements, if there are any.
    bool hasReadOnlyElements = false; ///< Scripts cannot write them.
    bool hasOtherNames = false;       ///< Objects have properties that nobody declares.
    /// Members of the class itself, beside the constructor.
    Declaration classMembers = nullptr;
    /// Members of the instances, where the table of the class is not asked: its objects have
    /// properties that come and go.
    Declaration members = nullptr;
    /// With `members`: properties that are not declared belong to the class of this object, too.
    bool describesOwnNames = false;
};

/// Describes a host class: the texts above, and all that a live object knows of its properties.
class HostClassInfo : public KrCore::LiveObjectClassInfo {
public:
    HostClassInfo(KrCore::LiveObject& object, int flags, const ClassTexts& texts);

    /// For `LiveObject::getClassInfo`. `texts` must outlive the record.
    static const KrCore::ClassInfo* describe(const KrCore::LiveObject& object, int flags,
                                             const ClassTexts& texts);

    bool getSuperclass(KrCore::String& name) const override;
    KrCore::InfoState getState() override { return texts_.state; }
    bool getDescription(bool longText, KrCore::String& text) const override;
    bool getSampleCode(KrCore::String& text) const override;
    bool enumerateNames(KrCore::SimpleArray& names, int flags) const override;
    const KrCore::ServiceInfo* getServiceInfo(const KrCore::String& name) const override;
    const KrCore::ServiceInfo* getStaticServiceInfo(const KrCore::String& name) const override;
    using LiveObjectClassInfo::getSampleCode;
    using LiveObjectClassInfo::getServiceInfo;
    using LiveObjectClassInfo::getStaticServiceInfo;

    // What a description as XML has no place for.

    /// Null for a class without elements.
    std::unique_ptr<KrCore::TypeInfo> getElementType() const;
    bool hasReadOnlyElements() const { return texts_.hasReadOnlyElements; }
    bool hasOtherNames() const { return texts_.hasOtherNames; }

private:
    using Declared = KrCore::InterfacePtr<const KrCore::PropertyManagerClassInfo>;

    Declared declaredBy(ClassTexts::Declaration declaration) const;
    void addOwnNames(const KrCore::PropertyManagerClassInfo& declared, KrCore::SimpleArray& names,
                     int flags) const;

    const ClassTexts& texts_;
    bool isCollection_;
};

} // namespace krhost
