#include "hosts/SeekFrom.h"

#include "hosts/ClassProperties.h"
#include "hosts/HostClassInfo.h"

#include <krcore/values/Error.h>
#include <krcore/values/Variant.h>

namespace krhost {

using namespace KrCore;

namespace {

/// IDs are the constants, counted from 1.
enum SeekFromID : int { Start = 1, Here, End };

constexpr int readOnly = int(InfoType::ReadOnly);

constexpr LivePropertyInfo seekFromTable[] = {
    {"Start", Start, readOnly, "number;;;0\tThe start of the file"},
    {"Here", Here, readOnly, "number;;;1\tThe current position"},
    {"End", End, readOnly, "number;;;2\tThe end of the file"},
    {nullptr, 0, 0, nullptr}};

constexpr ClassTexts seekFromTexts = {.description = "Where File.seek counts from.",
                                      .sample = "file.seek(0, SeekFrom.End);",
                                      .state = InfoState::Enumeration};

} // namespace

SeekFrom::SeekFrom() : LiveObject("SeekFrom", false) {
    propertyManager = classProperties<seekFromTable>();
}

InfoType SeekFrom::getType(int id) {
    const InfoType kind = propertyManager->getType(id);
    return kind != InfoType::Unknown ? kind : LiveObject::getType(id);
}

const ClassInfo* SeekFrom::getClassInfo(int flags) const {
    return HostClassInfo::describe(*this, flags, seekFromTexts);
}

int SeekFrom::get(int id, Variant& result, Error* err) const {
    if (!isValid() || id < Start || id > End) return LiveObject::get(id, result, err);
    result = id - Start;
    return ErrorCode::Ok;
}

} // namespace krhost
