#pragma once

#include <krcore/live/LiveObject.h>
#include <krcore/regexp/Capture.h>

namespace krhost {

/// Where a group of a match lies in the text. Scripts know it as `KrCapture` and find it in
/// `KrMatch.captures`.
class CaptureObject : public KrCore::LiveObject {
public:
    CaptureObject();
    explicit CaptureObject(const KrCore::Capture& capture);

    int clone(KrCore::LiveObject** result, bool deep) const override;
    KrCore::InfoType getType(int id) override;
    const KrCore::ClassInfo* getClassInfo(int flags) const override;
    int get(int id, KrCore::Variant& result, KrCore::Error* err) const override;

private:
    KrCore::Capture capture_;
};

} // namespace krhost
