#include <krcore/live/LiveObject.h>

#include "foundation/Context.h"
#include "live/ComponentWalk.h"
#include "live/LiveObjectData.h"
#include "live/LiveObjectFlags.h"

#include <krcore/foundation/ErrorCode.h>
#include <krcore/live/LivePropertyManager.h>
#include <krcore/messages/LiveMessage.h>

namespace KrCore {

/// A name that listeners of an object are being asked for, in the chain of those that the calling
/// thread asks for one within the other. A listener may look up other names in order to answer; the
/// chain keeps one that looks up the same name, or ever new ones, from exhausting the stack.
struct NameQuestion {
    NameQuestion(Context& asking, const LiveObject& object, const String& name)
        : context(asking), asked(object), wanted(name), outer(asking.nameQuestion),
          depth(outer ? outer->depth + 1 : 1) {
        context.nameQuestion = this;
    }
    ~NameQuestion() { context.nameQuestion = outer; }
    NameQuestion(const NameQuestion&) = delete;
    NameQuestion& operator=(const NameQuestion&) = delete;

    /// Why it cannot be asked, or 0.
    int refusal() const {
        for (const NameQuestion* other = outer; other; other = other->outer) {
            if (&other->asked == &asked && other->wanted == wanted) return ErrorCode::NotFound;
        }
        return depth > deepest ? ErrorCode::StackOverrun : ErrorCode::Ok;
    }

    static constexpr int deepest = 128;
    Context& context;
    const LiveObject& asked;
    const String& wanted;
    NameQuestion* const outer;
    const int depth;
};

namespace {

struct NameAnswer {
    int code = ErrorCode::NotFound;
    int id = 0;
    InfoType kind = InfoType::Unknown;
};

/// The first component that does not answer "not found" decides, also when it hides the name.
bool askComponents(const LiveObject& object, const LiveObjectData& data, const String& name,
                   int flags, NameAnswer& answer) {
    for (ComponentWalk walk(data.components); walk.next();) {
        answer = NameAnswer();
        answer.code = walk->getIDForName(object, name, answer.id, answer.kind, flags);
        if (answer.code == ErrorCode::NotFound) continue;
        if (answer.code == ErrorCode::Ok && answer.kind == InfoType::Hidden)
            answer.code = ErrorCode::NotFound;
        return true;
    }
    return false;
}

} // namespace

int LiveObject::getIDForName(const String& name, int& id, InfoType& kind, int flags) const {
    id = 0;
    kind = InfoType::Unknown;
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    const bool ignoreCase = (flags & RequestFlag::IgnoreCase) != 0;
    if (LiveProperty* record = data_->properties.find(name, ignoreCase)) {
        data_->properties.touch(*record);
        id = record->getID();
        kind = record->getKind();
        return ErrorCode::Ok;
    }
    if (!name.isEmpty() && propertyManager) {
        ScopedLock guard(*propertyManager);
        if (propertyManager->getIDForName(name, id, kind, flags) == ErrorCode::Ok)
            return ErrorCode::Ok;
        id = 0;
        kind = InfoType::Unknown;
    }
    NameAnswer answer;
    if (!askComponents(*this, *data_, name, flags, answer))
        return askListenersForName(name, id, kind, flags);
    if (answer.code == ErrorCode::Ok) {
        id = answer.id;
        kind = answer.kind;
    }
    return answer.code;
}

int LiveObject::askListenersForName(const String& name, int& id, InfoType& kind, int flags) const {
    if (!(flags_ & ObjectFlag::Dynamic) || !isListening(MessageID::GetID))
        return ErrorCode::NotFound;
    const String wanted = name;
    Context* context = currentContext();
    if (!context) return ErrorCode::OutOfMemory;
    const NameQuestion question(*context, *this, wanted);
    if (const int code = question.refusal()) return code;
    LiveMessage message(*this, MessageID::GetID, 0, Variant(wanted), nullptr);
    message.getLanguage() = flags;
    if (!broadcast(message)) return ErrorCode::NotFound;
    if (message.getError() != ErrorCode::Ok) return message.getError();
    if (!isUsable()) return ErrorCode::ObjectInvalid;

    const auto kindBits = static_cast<unsigned>(message.getData()->getInteger()) &
                          static_cast<unsigned>(PropertyFlag::KindMask);
    LiveProperty* record = const_cast<LiveObject*>(this)->addProperty(
        wanted, message.getPropertyID(), kindBits | PropertyFlag::Hidden,
        PropertyFlag::KeptByListener);
    if (!record) return ErrorCode::OutOfMemory;
    id = record->getID();
    kind = record->getKind();
    return ErrorCode::Ok;
}

int LiveObject::getNameForID(int id, String& name, int flags) const {
    if (!isUsable()) {
        name.erase();
        return ErrorCode::ObjectInvalid;
    }
    if (id == PropertyID::Constructor) {
        name = getClassName();
        return ErrorCode::Ok;
    }
    if (LiveProperty* record = findProperty(id)) {
        name = record->getName();
        return ErrorCode::Ok;
    }
    if (propertyManager) {
        ScopedLock guard(*propertyManager);
        if (propertyManager->getNameForID(id, name, flags) == ErrorCode::Ok) return ErrorCode::Ok;
    }
    for (ComponentWalk walk(data_->components); walk.next();) {
        if (walk->getNameForID(*this, id, name, flags) == ErrorCode::Ok) return ErrorCode::Ok;
    }
    name.erase();
    return ErrorCode::NotFound;
}

InfoType LiveObject::getType(int id) {
    if (!isUsable()) return InfoType::Unknown;
    if (id == PropertyID::Constructor) return InfoType::Method;
    if (LiveProperty* record = data_->properties.find(id)) return record->getKind();
    if (propertyManager) {
        ScopedLock guard(*propertyManager);
        const InfoType kind = propertyManager->getType(id);
        if (kind != InfoType::Unknown) return kind;
    }
    for (ComponentWalk walk(data_->components); walk.next();) {
        const InfoType kind = walk->getType(*this, id);
        if (kind == InfoType::Unknown) continue;
        return kind == InfoType::Hidden ? InfoType::Unknown : kind;
    }
    return InfoType::Unknown;
}

} // namespace KrCore
