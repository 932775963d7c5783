#include "live/StaticPropertyManager.h"

#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/live/LivePropertyInfo.h>
#include <krcore/text/String.h>
#include <krcore/text/UnicodeUtils.h>

namespace KrCore {

namespace {

constexpr LivePropertyInfo emptyTable[] = {{nullptr, 0, 0, nullptr}};

unsigned short unitAt(const char* rowName, int index) {
    return static_cast<unsigned char>(rowName[index]);
}

/// Compares without making a String of the row's name, and ends at the first unit in most rows.
bool isSame(const String& name, const char* rowName) {
    const unsigned short* units = name.wstr();
    const int length = name.length();
    for (int i = 0; i < length; ++i) {
        // A unit 0 within the name must not pass for the end of the row's.
        if (units[i] != unitAt(rowName, i) || units[i] == 0) return false;
    }
    return rowName[length] == 0;
}

bool isSameIgnoringCase(const String& name, const char* rowName) {
    const unsigned short* units = name.wstr();
    const int length = name.length();
    for (int i = 0; i < length; ++i) {
        const unsigned short unit = unitAt(rowName, i);
        if (unit == 0 || units[i] == 0) return false;
        if (units[i] != unit && UnicodeUtils::towupper(units[i]) != UnicodeUtils::towupper(unit))
            return false;
    }
    return rowName[length] == 0;
}

} // namespace

StaticPropertyManager::StaticPropertyManager(const LivePropertyInfo* table)
    : table_(table ? table : emptyTable) {
    for (const LivePropertyInfo* row = table_; row->name; ++row)
        noteID(row->id);
}

void StaticPropertyManager::registerProperty(const char*, int, int, const char*) {}

void StaticPropertyManager::registerProperties(const LivePropertyInfo*) {}

int StaticPropertyManager::getIDForName(const String& name, int& id, InfoType& kind,
                                        int flags) const {
    id = 0;
    kind = InfoType::Unknown;
    if (name.isEmpty()) return ErrorCode::NotFound;
    const auto matches = ignoresCase(flags) ? isSameIgnoringCase : isSame;
    for (const LivePropertyInfo* row = table_; row->name; ++row) {
        if (!isVisible(row->flags, flags) || !matches(name, row->name)) continue;
        id = row->id;
        kind = kindOf(row->flags);
        return ErrorCode::Ok;
    }
    return ErrorCode::NotFound;
}

const LivePropertyInfo* StaticPropertyManager::findRow(int id) const {
    for (const LivePropertyInfo* row = table_; row->name; ++row) {
        if (row->id == id) return row;
    }
    return nullptr;
}

int StaticPropertyManager::getNameForID(int id, String& name, int flags) const {
    const LivePropertyInfo* row = findRow(id);
    if (!row || !isVisible(row->flags, flags)) {
        name.erase();
        return ErrorCode::NotFound;
    }
    name = row->name;
    return ErrorCode::Ok;
}

InfoType StaticPropertyManager::getType(int id) const {
    const LivePropertyInfo* row = findRow(id);
    return row ? kindOf(row->flags) : InfoType::Unknown;
}

int StaticPropertyManager::enumerate(SimpleArray& ids, int flags) const {
    for (const LivePropertyInfo* row = table_; row->name; ++row) {
        if (isListed(row->flags, flags)) ids.append(row->id);
    }
    return ErrorCode::Ok;
}

} // namespace KrCore
