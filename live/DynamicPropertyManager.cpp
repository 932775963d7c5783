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
    unsigned registration; // the place in the order of registrations
};

struct DynamicPropertyManager::IDInfo : public Root {
    IDInfo(int rowFlags, const char* text) : flags(rowFlags), descriptor(text) {}

    int flags;
    Descriptor descriptor;
    bool hasName = false;
    String name; // the one registered first that still leads here
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

DynamicPropertyManager::NameInfo* DynamicPropertyManager::findName(const String& name,
                                                                   bool ignoreCase) const {
    return pointerOf<NameInfo>(names_.find(name, ignoreCase));
}

DynamicPropertyManager::IDInfo* DynamicPropertyManager::findID(int id) const {
    return pointerOf<IDInfo>(ids_.find(id));
}

DynamicPropertyManager::IDInfo& DynamicPropertyManager::requireID(int id, int flags,
                                                                  const char* descriptor) {
    if (IDInfo* known = findID(id)) {
        known->flags |= flags & PropertyFlag::LanguageMask;
        return *known;
    }
    auto info = std::make_unique<IDInfo>(flags, descriptor);
    int position = sortedIDs_.length();
    const SimpleArray& sorted = sortedIDs_;
    while (position > 0 && sorted[position - 1] > id)
        --position;
    sortedIDs_.insert(id, position);
    try {
        ids_.set(id, wordOf(info.get()));
    } catch (...) {
        sortedIDs_.removeAt(position);
        throw;
    }
    return *info.release();
}

void DynamicPropertyManager::registerProperty(const char* name, int id, int flags,
                                              const char* descriptor) {
    const String key(name);
    auto info = std::make_unique<NameInfo>(key, id, flags, descriptor, registrations_);
    IDInfo& idInfo = requireID(id, flags, descriptor);
    NameInfo* const previous = findName(key, false);
    names_.set(key, wordOf(info.get()), false);
    info.release();
    const std::unique_ptr<NameInfo> replaced(previous); // only now: the table let go of it
    ++registrations_;
    noteID(id);
    if (!idInfo.hasName) {
        idInfo.hasName = true;
        idInfo.name = key;
    }
    if (replaced) chooseName(replaced->id);
}

/// Finds the name for an ID anew, after one of its names was registered again.
void DynamicPropertyManager::chooseName(int id) {
    struct Search {
        int id;
        const NameInfo* first;
    } search{id, nullptr};
    names_.forEach(
        [](const String&, long long* word, long long context) {
            const auto* info = pointerOf<NameInfo>(*word);
            auto& found = *pointerOf<Search>(context);
            if (info->id == found.id &&
                (!found.first || info->registration < found.first->registration))
                found.first = info;
            return true;
        },
        wordOf(&search));
    IDInfo& info = *findID(id);
    info.hasName = search.first != nullptr;
    info.name = search.first ? search.first->name : String();
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
    const NameInfo* info = findName(name, ignoresCase(flags));
    if (!info || !isVisible(info->flags, flags)) return ErrorCode::NotFound;
    id = info->id;
    kind = kindOf(info->flags);
    return ErrorCode::Ok;
}

int DynamicPropertyManager::getNameForID(int id, String& name, int flags) const {
    const IDInfo* info = findID(id);
    if (!info || !info->hasName || !isVisible(info->flags, flags)) {
        name.erase();
        return ErrorCode::NotFound;
    }
    name = info->name;
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
    const NameInfo* info = findName(String(), false);
    if (!info || !isVisible(info->flags, flags)) return nullptr;
    return makeConstructorInfo(info->flags, info->descriptor.text());
}

const ServiceInfo* DynamicPropertyManager::getServiceInfo(const String& name, int flags) const {
    const NameInfo* info = name.isEmpty() ? nullptr : findName(name, ignoresCase(flags));
    if (!info || !isVisible(info->flags, flags)) return nullptr;
    return new PropServiceInfo(info->id, info->name, info->flags, info->descriptor.text());
}

const ServiceInfo* DynamicPropertyManager::getServiceInfo(int id, int flags) const {
    const IDInfo* info = findID(id);
    if (!info || !info->hasName || !isVisible(info->flags, flags)) return nullptr;
    return new PropServiceInfo(id, info->name, info->flags, info->descriptor.text());
}

} // namespace KrCore
