#pragma once

#include <krcore/live/LiveObject.h>
#include <krcore/values/Variant.h>

#include <array>

namespace KrCore {
class LiveMessage;
}

namespace krhost {

/// Answers for the settings that the host knows: a listener that supplies properties of an object
/// without that object's class knowing them. It keeps their values, too.
class SettingsSource : public KrCore::Listener {
public:
    SettingsSource();

    void attach(KrCore::LiveObject& object);
    void detach(KrCore::LiveObject& object);
    bool notify(KrCore::Message& message) override;

private:
    static constexpr int count = 4;

    bool resolve(KrCore::LiveMessage& request) const;
    bool run(KrCore::LiveMessage& request);
    bool list(KrCore::LiveMessage& request) const;
    void restore();

    std::array<KrCore::Variant, count> values_;
};

/// A dynamic object. Scripts may put any property into it; the names it does not know are asked of
/// its listener, which answers for language, currency, decimals and pageWidth, and for the method
/// `restore`, which sets these four back.
class Settings : public KrCore::LiveObject {
public:
    Settings();

    int clone(KrCore::LiveObject** result, bool deep) const override;
    const KrCore::ClassInfo* getClassInfo(int flags) const override;

protected:
    ~Settings() override;

private:
    SettingsSource source_;
};

} // namespace krhost
