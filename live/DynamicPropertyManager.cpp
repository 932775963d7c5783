#include "live/DynamicPropertyManager.h"

#include "live/PointerWord.h"
#include "live/reflection/PropServiceInfo.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/live/LivePropertyInfo.h>
#include <krcore/text/String.h>

#include <cstring>
#include <memory>

namespace KrCore {

namespace {

/// An owned copy of a descriptor text, which may be null.
class Descriptor {
public:
    explicit Descriptor(const char* text) {
        if (!text) return;
        const std::size_t byteCount = std::strlen(text) + 1;
        text_ = static_cast<char*>(Heap::operator new(byteCount));
        std::memcpy(text_, text, byteCount);
    }
    ~Descriptor() { Heap::operator delete(text_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    const char* text() const { return text_; }

private:
    char* text_ = nullptr;
};

} // namespace

struct DynamicPropertyManager::NameInfo : public Root {
    NameInfo(const String& rowName, int propertyID, int rowFlags, const char* text, unsigned number)
        : name(rowName), id(propertyID), flags(rowFlags), descriptor(text), registration(number) {}

    String name;
    int id;
    int flags;
    Descriptor descriptor;
    unsigned registration;        // the place in the order of registrations
    NameInfo* nextOfID = nullptr; // the name of the same ID that was registered next
};

struct DynamicPropertyManager::IDInfo : public Root {
    IDInfo(int rowFlags, const char* text) : flags(rowFlags), descriptor(text) {}

    void addName(NameInfo& info) {
        (lastName ? lastName->nextOfID : firstName) = &info;
        lastName = &info;
    }
    void removeName(const NameInfo& info) {
        NameInfo* before = nullptr;
        for (NameInfo* name = firstName; name != &info; name = name->nextOfID)
            before = name;
        (before ? before->nextOfID : firstName) = info.nextOfID;
        if (lastName == &info) lastName = before;
    }

    int flags;
    Descriptor descriptor;
    NameInfo* firstName = nullptr; // null when all its names have moved to other IDs
    NameInfo* lastName = nullptr;
};

DynamicPropertyManager::DynamicPropertyManager() = default;

DynamicPropertyManager::~DynamicPropertyManager() {
    names_.forEach(
        [](const String&, long long* info, long long) {
            delete pointerOf<NameInfo>(*info);
            return true;
        },
        0);
    for (long long id : sortedIDs_)
        delete pointerOf<IDInfo>(ids_.find(id));
}

/// The row of a name, if the language sees it. Of spellings that differ in case, any that it sees
/// will do: the table's first one, else the one registered first.
const DynamicPropertyManager::NameInfo* DynamicPropertyManager::findRow(const String& name,
                                                                        int request) const {
    const bool ignoreCase = ignoresCase(request);
    const NameInfo* info = pointerOf<NameInfo>(names_.find(name, ignoreCase));
    if (!info || isVisible(info->flags, request)) return info;
    return ignoreCase ? findOtherSpelling(name, request) : nullptr;
}

const DynamicPropertyManager::NameInfo*
DynamicPropertyManager::findOtherSpelling(const String& name, int request) const {
    SimpleArray rows;
    names_.getData(rows);
    const NameInfo* first = nullptr;
    for (long long word : rows) {
        const auto* info = pointerOf<NameInfo>(word);
        const bool isEarlier = !first || info->registration < first->registration;
        if (isEarlier && isVisible(info->flags, request) && info->name.ucmp(name) == 0)
            first = info;
    }
    return first;
}

DynamicPropertyManager::IDInfo* DynamicPropertyManager::findID(int id) const {
    return pointerOf<IDInfo>(ids_.find(id));
}

void DynamicPropertyManager::enterID(int id, IDInfo& info) {
    int position = sortedIDs_.length();
    while (position > 0 && sortedIDs_.getData()[position - 1] > id)
        --position;
    sortedIDs_.insert(id, position);
    try {
        ids_.set(id, wordOf(&info));
    } catch (...) {
        sortedIDs_.removeAt(position);
        throw;
    }
}

void DynamicPropertyManager::leaveID(int id) {
    ids_.remove(id);
    sortedIDs_.remove(id);
}

void DynamicPropertyManager::registerProperty(const char* name, int id, int flags,
                                              const char* descriptor) {
    const String key(name);
    auto info = std::make_unique<NameInfo>(key, id, flags, descriptor, registrations_);
    std::unique_ptr<IDInfo> newID;
    if (!findID(id)) newID = std::make_unique<IDInfo>(flags, descriptor);
    NameInfo* const previous = pointerOf<NameInfo>(names_.find(key, false));
    if (newID) enterID(id, *newID);
    try {
        names_.set(key, wordOf(info.get()), false);
    } catch (...) {
        if (newID) leaveID(id);
        throw;
    }
    // Nothing can fail any more.
    newID.release();
    IDInfo& idInfo = *findID(id);
    idInfo.flags |= flags & PropertyFlag::LanguageMask;
    idInfo.addName(*info.release());
    if (previous) findID(previous->id)->removeName(*previous);
    delete previous;
    ++registrations_;
    noteID(id);
}

void DynamicPropertyManager::registerProperties(const LivePropertyInfo* table) {
    for (const LivePropertyInfo* row = table; row && row->name; ++row)
        registerProperty(row->name, row->id, row->flags, row->descriptor);
}

int DynamicPropertyManager::getIDForName(const String& name, int& id, InfoType& kind,
                                         int flags) const {
    id = 0;
    kind = InfoType::Unknown;
    if (name.isEmpty()) return ErrorCode::NotFound;
    const NameInfo* info = findRow(name, flags);
    if (!info) return ErrorCode::NotFound;
    id = info->id;
    kind = kindOf(info->flags);
    return ErrorCode::Ok;
}

int DynamicPropertyManager::getNameForID(int id, String& name, int flags) const {
    const IDInfo* info = findID(id);
    if (!info || !info->firstName || !isVisible(info->flags, flags)) {
        name.erase();
        return ErrorCode::NotFound;
    }
    name = info->firstName->name;
    return ErrorCode::Ok;
}

InfoType DynamicPropertyManager::getType(int id) const {
    const IDInfo* info = findID(id);
    return info ? kindOf(info->flags) : InfoType::Unknown;
}

int DynamicPropertyManager::enumerate(SimpleArray& ids, int flags) const {
    for (long long id : sortedIDs_) {
        if (isListed(findID(static_cast<int>(id))->flags, flags)) ids.append(id);
    }
    return ErrorCode::Ok;
}

const ServiceInfo* DynamicPropertyManager::getConstructor(int flags) const {
    const NameInfo* info = findRow(String(), flags);
    if (!info) return nullptr;
    return makeConstructorInfo(info->flags, info->descriptor.text());
}

const ServiceInfo* DynamicPropertyManager::getServiceInfo(const String& name, int flags) const {
    const NameInfo* info = name.isEmpty() ? nullptr : findRow(name, flags);
    if (!info) return nullptr;
    return new PropServiceInfo(info->id, info->name, info->flags, info->descriptor.text());
}

const ServiceInfo* DynamicPropertyManager::getServiceInfo(int id, int flags) const {
    const IDInfo* info = findID(id);
    if (!info || !info->firstName || !isVisible(info->flags, flags)) return nullptr;
    return new PropServiceInfo(id, info->firstName->name, info->flags, info->descriptor.text());
}

} // namespace KrCore
