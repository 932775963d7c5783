#include "live/StaticPropertyManager.h"

#include "live/NameHash.h"
#include "live/reflection/PropServiceInfo.h"

#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/live/LivePropertyInfo.h>
#include <krcore/text/String.h>
#include <krcore/text/UnicodeUtils.h>

#include <algorithm>
#include <bit>

namespace KrCore {

namespace {

// Up to here a scan is as fast as an index.
constexpr unsigned longestScan = 8;

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
    unsigned rowCount = 0;
    for (; table_[rowCount].name; ++rowCount)
        noteID(table_[rowCount].id);
    if (rowCount > longestScan) buildIndex(rowCount);
}

StaticPropertyManager::~StaticPropertyManager() { Heap::operator delete(slots_); }

/// Open addressing, half full at most. Rows of one name, and of one ID, start at the same slot and
/// go in from the top of the table, so a look-up meets them in the table's order.
void StaticPropertyManager::buildIndex(unsigned rowCount) {
    const std::size_t slotCount = std::bit_ceil(std::size_t(rowCount) * 2);
    slots_ = static_cast<Slot*>(Heap::operator new(slotCount * sizeof(Slot)));
    std::fill_n(slots_, slotCount, Slot{0, 0, 0});
    slotMask_ = static_cast<unsigned>(slotCount - 1);
    for (unsigned row = 0; row < rowCount; ++row) {
        enterName(row);
        enterID(row);
    }
}

void StaticPropertyManager::enterName(unsigned row) {
    NameHash hash;
    for (const char* unit = table_[row].name; *unit; ++unit)
        hash.add(static_cast<unsigned char>(*unit));
    unsigned position = hash.value() & slotMask_;
    while (slots_[position].rowOfName)
        position = (position + 1) & slotMask_;
    slots_[position].nameHash = hash.value();
    slots_[position].rowOfName = row + 1;
}

void StaticPropertyManager::enterID(unsigned row) {
    unsigned position = slotOf(table_[row].id);
    while (slots_[position].rowOfID)
        position = (position + 1) & slotMask_;
    slots_[position].rowOfID = row + 1;
}

unsigned StaticPropertyManager::slotOf(int id) const {
    // IDs count up, or differ in their upper bytes when they are four characters.
    const std::uint32_t mixed = static_cast<std::uint32_t>(id) * 2654435769U;
    return (mixed ^ (mixed >> 16U)) & slotMask_;
}

const LivePropertyInfo* StaticPropertyManager::scan(const String& name, int flags) const {
    const auto matches = ignoresCase(flags) ? isSameIgnoringCase : isSame;
    for (const LivePropertyInfo* row = table_; row->name; ++row) {
        if (isVisible(row->flags, flags) && matches(name, row->name)) return row;
    }
    return nullptr;
}

const LivePropertyInfo* StaticPropertyManager::findRow(const String& name, int flags) const {
    if (!slots_ || ignoresCase(flags)) return scan(name, flags);
    const std::uint32_t hash = NameHash::of(name);
    for (unsigned position = hash & slotMask_; slots_[position].rowOfName;
         position = (position + 1) & slotMask_) {
        if (slots_[position].nameHash != hash) continue;
        const LivePropertyInfo* row = &table_[slots_[position].rowOfName - 1];
        if (isVisible(row->flags, flags) && isSame(name, row->name)) return row;
    }
    return nullptr;
}

void StaticPropertyManager::registerProperty(const char*, int, int, const char*) {}

void StaticPropertyManager::registerProperties(const LivePropertyInfo*) {}

int StaticPropertyManager::getIDForName(const String& name, int& id, InfoType& kind,
                                        int flags) const {
    const LivePropertyInfo* row = name.isEmpty() ? nullptr : findRow(name, flags);
    id = row ? row->id : 0;
    kind = row ? kindOf(row->flags) : InfoType::Unknown;
    return row ? ErrorCode::Ok : ErrorCode::NotFound;
}

const LivePropertyInfo* StaticPropertyManager::findRow(int id) const {
    if (slots_) {
        for (unsigned position = slotOf(id); slots_[position].rowOfID;
             position = (position + 1) & slotMask_) {
            const LivePropertyInfo* row = &table_[slots_[position].rowOfID - 1];
            if (row->id == id) return row;
        }
        return nullptr;
    }
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

const ServiceInfo* StaticPropertyManager::getConstructor(int flags) const {
    for (const LivePropertyInfo* row = table_; row->name; ++row) {
        if (*row->name == 0 && isVisible(row->flags, flags))
            return makeConstructorInfo(row->flags, row->descriptor);
    }
    return nullptr;
}

const ServiceInfo* StaticPropertyManager::getServiceInfo(const String& name, int flags) const {
    const LivePropertyInfo* row = name.isEmpty() ? nullptr : findRow(name, flags);
    return row ? new PropServiceInfo(row->id, row->name, row->flags, row->descriptor) : nullptr;
}

const ServiceInfo* StaticPropertyManager::getServiceInfo(int id, int flags) const {
    const LivePropertyInfo* row = findRow(id);
    if (!row || !isVisible(row->flags, flags)) return nullptr;
    return new PropServiceInfo(id, row->name, row->flags, row->descriptor);
}

} // namespace KrCore
