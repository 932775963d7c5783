#include <krcore/live/LiveObject.h>

#include "live/ComponentWalk.h"
#include "live/LiveObjectData.h"
#include "live/PointerWord.h"

#include <krcore/containers/SparseArray.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/live/LivePropertyManager.h>
#include <krcore/messages/LiveMessage.h>

#include <utility>

namespace KrCore {

namespace {

/// Appends IDs that are not in the array yet. A long array gets a set beside it.
class UniqueIDs {
public:
    explicit UniqueIDs(SimpleArray& ids) : ids_(ids) {}

    void add(long long id) {
        if (contains(id)) return;
        ids_.append(id);
        if (known_.length() > 0) known_.set(id, 1);
    }
    void addAll(const SimpleArray& ids) {
        for (long long id : ids)
            add(id);
    }

private:
    static constexpr int longestSearch = 32;

    bool contains(long long id) {
        if (ids_.length() <= longestSearch) return ids_.indexOf(id) >= 0;
        if (known_.length() == 0) {
            for (long long known : ids_)
                known_.set(known, 1);
        }
        return known_.hasKey(id);
    }

    SimpleArray& ids_;
    SparseArray known_; // empty while the array is short
};

bool isListed(const LiveProperty& record, int request) {
    if (record.has(PropertyFlag::Hidden) && !(request & RequestFlag::WithHidden)) return false;
    const int wanted =
        record.has(PropertyFlag::ListAsReadOnly) ? RequestFlag::ReadOnly : RequestFlag::ReadWrite;
    return (request & wanted) != 0;
}

void addRecords(const DynamicProperties& properties, int flags, UniqueIDs& ids) {
    SimpleArray records;
    properties.listByCreation(records);
    for (long long word : records) {
        const auto* record = pointerOf<LiveProperty>(word);
        if (isListed(*record, flags)) ids.add(record->getID());
    }
}

bool isHiddenByComponent(const LiveObject& object, const SimpleArray& components, int id) {
    for (ComponentWalk walk(components); walk.next();) {
        if (walk->getType(object, id) == InfoType::Hidden) return true;
    }
    return false;
}

/// Takes out what components hide, also IDs that the caller had in the array before.
void removeHidden(const LiveObject& object, const SimpleArray& components, SimpleArray& ids) {
    if (components.length() == 0) return;
    SimpleArray kept;
    for (int i = 0; i < ids.length(); ++i) {
        const long long id = std::as_const(ids)[i];
        if (!isHiddenByComponent(object, components, static_cast<int>(id))) kept.append(id);
    }
    if (kept.length() < ids.length()) ids = kept;
}

} // namespace

int LiveObject::enumerate(SimpleArray& ids, int flags) const {
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    UniqueIDs unique(ids);
    addRecords(data_->properties, flags, unique);
    if (propertyManager) {
        SimpleArray declared;
        ScopedLock guard(*propertyManager);
        propertyManager->enumerate(declared, flags);
        unique.addAll(declared);
    }
    for (ComponentWalk walk(data_->components); walk.next();) {
        SimpleArray offered;
        walk->enumerate(*this, offered, flags);
        unique.addAll(offered);
    }
    removeHidden(*this, data_->components, ids);
    if (!isListening(MessageID::Enumerate)) return ErrorCode::Ok;
    LiveMessage message(*this, MessageID::Enumerate, ids);
    message.getLanguage() = flags;
    return broadcast(message) ? message.getError() : ErrorCode::Ok;
}

} // namespace KrCore
