#pragma once

#include <krcore/live/LiveObject.h>

namespace krhost {

/// Where `File.seek` counts from: an enumeration, which is an object of named constants that
/// scripts find as a global of that name.
///
/// ```js
/// file.seek(0, SeekFrom.End);
/// ```
class SeekFrom : public KrCore::LiveObject {
public:
    SeekFrom();

    KrCore::InfoType getType(int id) override;
    const KrCore::ClassInfo* getClassInfo(int flags) const override;
    int get(int id, KrCore::Variant& result, KrCore::Error* err) const override;
};

} // namespace krhost
