#include <krcore/live/LiveCollection.h>

#include "live/ComponentWalk.h"
#include "live/DrawPropertyID.h"
#include "live/LiveObjectData.h"

#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/messages/LiveMessage.h>
#include <krcore/values/Variant.h>

#include <algorithm>

namespace KrCore {

namespace {

/// The component that keeps the elements, if there is one: counted and locked from the moment it
/// says so until its work is done.
class ElementKeeper {
public:
    explicit ElementKeeper(const SimpleArray& components) : walk_(components), found_(search()) {}
    explicit operator bool() const { return found_; }
    LiveComponent* operator->() const { return &*walk_; }

private:
    bool search() {
        while (walk_.next()) {
            if (walk_->isIndexable()) return true;
        }
        return false;
    }

    ComponentWalk walk_;
    bool found_;
};

/// The code of a listener, or `unanswered` when nobody takes the request.
int ask(const LiveObject& object, LiveMessage& message, int unanswered) {
    return object.broadcast(message) ? message.getError() : unanswered;
}

/// Messages carry indexes and lengths as property IDs, with the same bits.
int idOf(unsigned index) { return static_cast<int>(index); }

unsigned lengthIn(const Variant& value) {
    constexpr double longest = 4294967295.0;
    const double length = value.getDouble();
    if (!(length > 0)) return 0;
    return static_cast<unsigned>(std::min(length, longest));
}

bool isLengthName(const String& name, int flags) {
    return (flags & RequestFlag::IgnoreCase) ? name.ucmp("length") == 0 : name == "length";
}

} // namespace

LiveCollection::LiveCollection(const char* className, int lengthID, bool readOnly)
    : LiveObject(className, !readOnly), lengthID_(lengthID ? lengthID : drawPropertyID()),
      readOnly_(readOnly) {}

LiveCollection::~LiveCollection() = default;

const void* LiveCollection::getAs(int tag) const {
    return tag == TypeTag::Collection ? this : LiveObject::getAs(tag);
}

void* LiveCollection::getAs(int tag) {
    return tag == TypeTag::Collection ? this : LiveObject::getAs(tag);
}

int LiveCollection::clone(LiveObject** result, bool deep) const {
    *result = nullptr;
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    auto copy = InterfacePtr<LiveObject>::adopt(new LiveCollection("", lengthID_, readOnly_));
    const int code = cloneContent(*copy, deep);
    if (code == ErrorCode::Ok) *result = copy.detach();
    return code;
}

const String& LiveCollection::getClassName() const {
    if (className_.isEmpty()) className_ = "Collection";
    return className_;
}

int LiveCollection::getIDForName(const String& name, int& id, InfoType& kind, int flags) const {
    if (!isUsable() || !isLengthName(name, flags))
        return LiveObject::getIDForName(name, id, kind, flags);
    id = lengthID_;
    kind = lengthKind();
    return ErrorCode::Ok;
}

int LiveCollection::getNameForID(int id, String& name, int flags) const {
    if (!isUsable() || id != lengthID_) return LiveObject::getNameForID(id, name, flags);
    name = flags == RequestFlag::IgnoreCase ? "Length" : "length";
    return ErrorCode::Ok;
}

int LiveCollection::enumerate(SimpleArray& ids, int flags) const {
    const int code = LiveObject::enumerate(ids, flags);
    if (code != ErrorCode::Ok) return code;
    const int wanted = readOnly_ ? RequestFlag::ReadOnly : RequestFlag::ReadWrite;
    if ((flags & wanted) && ids.indexOf(lengthID_) < 0) ids.append(lengthID_);
    return ErrorCode::Ok;
}

InfoType LiveCollection::getType(int id) {
    return isUsable() && id == lengthID_ ? lengthKind() : LiveObject::getType(id);
}

int LiveCollection::get(int id, Variant& result, Error* err) const {
    if (id != lengthID_) return LiveObject::get(id, result, err);
    result.erase();
    unsigned length = 0;
    const int code = isUsable() ? getLength(length) : static_cast<int>(ErrorCode::ObjectInvalid);
    if (code == ErrorCode::Ok) result = length;
    return setError(code, id, err, false);
}

int LiveCollection::put(int id, const Variant& value, Error* err) {
    if (id != lengthID_) return LiveObject::put(id, value, err);
    return setError(putLength(lengthIn(value)), id, err, false);
}

/// Why a change cannot be made, or 0.
int LiveCollection::refusal() const {
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    return readOnly_ ? ErrorCode::ReadOnly : ErrorCode::Ok;
}

int LiveCollection::getLength(unsigned& length) const {
    length = 0;
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    if (ElementKeeper component{data_->components}) return component->getLength(*this, length);
    if (!isListening(MessageID::GetLength)) return ErrorCode::Ok;
    LiveMessage message(*this, MessageID::GetLength, 0, nullptr);
    if (!broadcast(message)) return ErrorCode::Ok;
    if (message.getError() == ErrorCode::Ok) length = lengthIn(*message.getData());
    return message.getError();
}

int LiveCollection::putLength(unsigned length) {
    int code = refusal();
    if (code != ErrorCode::Ok) return code;
    if (ElementKeeper component{data_->components}) code = component->putLength(*this, length);
    if (isListening(MessageID::PutLength)) {
        LiveMessage message(*this, MessageID::PutLength, idOf(length), nullptr);
        code = ask(*this, message, code);
    }
    return code == ErrorCode::Ok ? invokeAutostore(nullptr) : code;
}

int LiveCollection::getByIndex(unsigned index, Variant& result, Error* err) const {
    result.erase();
    int code = ErrorCode::ObjectInvalid;
    if (isUsable()) {
        if (ElementKeeper component{data_->components}) {
            code = component->getByIndex(*this, index, result, err);
        } else {
            LiveMessage message(*this, MessageID::GetByIndex, idOf(index), err);
            code = ask(*this, message, ErrorCode::OutOfRange);
            if (code == ErrorCode::Ok) result = *message.getData();
        }
    }
    return setError(code, idOf(index), err, true);
}

int LiveCollection::putByIndex(unsigned index, const Variant& value, Error* err) {
    int code = refusal();
    if (code == ErrorCode::Ok) {
        if (ElementKeeper component{data_->components}) {
            code = component->putByIndex(*this, index, value, err);
        } else {
            LiveMessage message(*this, MessageID::PutByIndex, idOf(index), value, err);
            code = ask(*this, message, ErrorCode::OutOfRange);
        }
        if (code == ErrorCode::Ok) code = invokeAutostore(err);
    }
    return setError(code, idOf(index), err, true);
}

int LiveCollection::deleteByIndex(unsigned index) {
    int code = refusal();
    if (code != ErrorCode::Ok) return code;
    if (ElementKeeper component{data_->components}) {
        code = component->deleteByIndex(*this, index);
    } else if (!isListening(MessageID::PutByIndex)) {
        code = ErrorCode::OutOfRange;
    } else {
        LiveMessage message(*this, MessageID::DeleteByIndex, idOf(index), nullptr);
        code = ask(*this, message, ErrorCode::OutOfRange);
    }
    return code == ErrorCode::Ok ? invokeAutostore(nullptr) : code;
}

} // namespace KrCore
