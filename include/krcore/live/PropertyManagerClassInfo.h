#pragma once

#include <krcore/live/ClassInfo.h>

namespace KrCore {

class LivePropertyManager;

/// Describes a class from what it declares, without an object of it. The name is that of the
/// constructor; a class that declares none has no name here. The only class-level member is the
/// constructor.
///
/// The manager's lock is held around each question.
class KR_API PropertyManagerClassInfo : public ClassInfo {
public:
    /// `manager` is borrowed and must outlive the record. `flags` is a request with the language
    /// for which names are looked up.
    PropertyManagerClassInfo(LivePropertyManager& manager, int flags);

    int getLanguage() const override;
    bool getName(String& name) const override;
    bool enumerateNames(SimpleArray& names, int flags) const override;
    bool enumerate(SimpleArray& ids, int flags) const override;
    const ServiceInfo* getServiceInfo(const String& name) const override;
    const ServiceInfo* getServiceInfo(int id) const override;
    const ServiceInfo* getStaticServiceInfo(const String& name) const override;
    const ServiceInfo* getStaticServiceInfo(int id) const override;

protected:
    ~PropertyManagerClassInfo() override;

private:
    LivePropertyManager& manager_;
    int language_;
};

} // namespace KrCore
