#include "hosts/CaptureObject.h"

#include "hosts/ClassProperties.h"
#include "hosts/HostClassInfo.h"

#include <krcore/foundation/InterfacePtr.h>
#include <krcore/values/Error.h>
#include <krcore/values/Variant.h>

namespace krhost {

using namespace KrCore;

namespace {

enum CaptureID : int { Start = 1, End };

constexpr LivePropertyInfo captureTable[] = {
    {"start", Start, int(InfoType::ReadOnly), "number;0\tWhere the group begins in the text"},
    {"end", End, int(InfoType::ReadOnly), "number;0\tWhere the text goes on behind the group"},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts captureTexts = {
    .description = "Where a group of a match lies in the text.",
    .sample = "var at = new KrRegExp(\"a(b+)\").exec(\"xabbx\").captures[1];\n"
              "print(at.start, at.end); // 2 4"};

} // namespace

CaptureObject::CaptureObject() : CaptureObject(Capture{0, 0}) {}

CaptureObject::CaptureObject(const Capture& capture)
    : LiveObject("KrCapture", false), capture_(capture) {
    propertyManager = classProperties<captureTable>();
}

int CaptureObject::clone(LiveObject** result, bool deep) const {
    auto copy = InterfacePtr<LiveObject>::adopt(new CaptureObject(capture_));
    const int code = cloneContent(*copy, deep);
    *result = code == ErrorCode::Ok ? copy.detach() : nullptr;
    return code;
}

InfoType CaptureObject::getType(int id) {
    const InfoType kind = propertyManager->getType(id);
    return kind != InfoType::Unknown ? kind : LiveObject::getType(id);
}

const ClassInfo* CaptureObject::getClassInfo(int flags) const {
    return HostClassInfo::describe(*this, flags, captureTexts);
}

int CaptureObject::get(int id, Variant& result, Error* err) const {
    if (!isValid() || (id != Start && id != End)) return LiveObject::get(id, result, err);
    result = id == Start ? capture_.start : capture_.end;
    return ErrorCode::Ok;
}

} // namespace krhost
