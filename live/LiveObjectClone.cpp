#include "live/CloneSession.h"

#include "live/LiveObjectData.h"
#include "live/LiveObjectFlags.h"
#include "live/PointerWord.h"

#include <krcore/foundation/ErrorCode.h>

namespace KrCore {

CloneSession::~CloneSession() {
    for (int i = 0; i < counted_.length(); ++i) {
        const auto* object = pointerOf<LiveObject>(counted_.getData()[i]);
        const bool isCopy = i % 2 == 1;
        if (isCopy && !hasSucceeded_)
            const_cast<LiveObject*>(object)->deleteDynamicProperties(true);
    }
    for (long long object : counted_)
        pointerOf<LiveObject>(object)->release();
}

LiveObject* CloneSession::copyOf(const LiveObject& original) const {
    return pointerOf<LiveObject>(copies_.find(wordOf(&original)));
}

void CloneSession::note(const LiveObject& original, LiveObject& copy) {
    if (copyOf(original)) return;
    counted_.setSize(counted_.length() + 2);
    long long* last = &counted_[counted_.length() - 2];
    last[0] = wordOf(&original);
    last[1] = wordOf(&copy);
    original.addRef();
    copy.addRef();
    copies_.set(wordOf(&original), wordOf(&copy));
}

int LiveObject::clone(LiveObject** result, bool deep) const {
    *result = nullptr;
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    const bool dynamic = (flags_ & ObjectFlag::Dynamic) != 0;
    auto copy = InterfacePtr<LiveObject>::adopt(new LiveObject(className_, dynamic));
    const int code = cloneContent(*copy, deep);
    if (code == ErrorCode::Ok) *result = copy.detach();
    return code;
}

int LiveObject::cloneContent(LiveObject& to, bool deep) const {
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    if (!to.data_) return ErrorCode::OutOfMemory;
    to.className_ = className_;
    to.flags_ = flags_;
    for (long long word : data_->components)
        to.addComponent(*pointerOf<LiveComponent>(word));
    SimpleArray records;
    data_->properties.listByCreation(records);
    for (long long word : records)
        to.data_->properties.add(pointerOf<LiveProperty>(word)->copyFor(to));
    to.propertyDefsChanged();
    return deep ? cloneReferences(to) : ErrorCode::Ok;
}

/// Puts copies in the place of the objects that a copy's properties refer to.
int LiveObject::cloneReferences(LiveObject& copy) const {
    struct Membership {
        explicit Membership(CloneSession*& slot) : slot_(slot), isOutermost_(!slot) {
            if (isOutermost_) slot_ = &own_;
        }
        ~Membership() {
            if (isOutermost_) slot_ = nullptr;
        }
        bool isOutermost() const { return isOutermost_; }
        CloneSession own_;
        CloneSession*& slot_;
        bool isOutermost_;
    };
    Membership membership(data_->cloneSession);
    CloneSession& session = *data_->cloneSession;
    session.note(*this, copy);
    SimpleArray records;
    copy.data_->properties.listByCreation(records);
    for (long long word : records) {
        auto* record = pointerOf<LiveProperty>(word);
        Variant value;
        if (record->get(value) != ErrorCode::Ok || !value.getLiveObject()) continue;
        InterfacePtr<LiveObject> part;
        if (const int code = value.getLiveObject()->cloneWithin(session, part)) return code;
        record->setValue(Variant(*part, value.getLiveObjectInfo()));
    }
    if (membership.isOutermost()) session.succeed();
    return ErrorCode::Ok;
}

/// A copy of this object as part of a larger one.
int LiveObject::cloneWithin(CloneSession& session, InterfacePtr<LiveObject>& copy) const {
    if (LiveObject* known = session.copyOf(*this)) {
        copy = InterfacePtr<LiveObject>(known);
        return ErrorCode::Ok;
    }
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    if (session.depth >= CloneSession::deepest) return ErrorCode::StackOverrun;
    struct Level {
        Level(LiveObjectData& data, CloneSession& within) : data_(data), session_(within) {
            data_.cloneSession = &session_;
            ++session_.depth;
        }
        ~Level() {
            --session_.depth;
            data_.cloneSession = nullptr;
        }
        LiveObjectData& data_;
        CloneSession& session_;
    };
    Level level(*data_, session);
    LiveObject* made = nullptr;
    const int code = clone(&made, true);
    copy = InterfacePtr<LiveObject>::adopt(made);
    if (code == ErrorCode::Ok && made) session.note(*this, *made);
    return code == ErrorCode::Ok && !made ? static_cast<int>(ErrorCode::General) : code;
}

} // namespace KrCore
