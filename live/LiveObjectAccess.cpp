#include <krcore/live/LiveObject.h>

#include "live/ComponentWalk.h"
#include "live/LiveObjectData.h"

#include <krcore/containers/Array.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/messages/LiveMessage.h>

// Access by ID. A dynamic property with the ID answers alone, even when it cannot do what is asked;
// only without one the components are asked. Whatever the outcome, it leaves through one setError.

namespace KrCore {

namespace {

int askListenersForValue(const LiveObject& object, LiveObjectData& data, int id, Variant& result,
                         Error* err) {
    LiveMessage message(object, MessageID::Get, id, err);
    if (!object.broadcast(message)) return ErrorCode::NotFound;
    if (message.getError() != ErrorCode::Ok) return message.getError();
    // Looked up again: the listener may have deleted the property.
    LiveProperty* record = data.properties.find(id);
    if (record && record->has(PropertyFlag::KeptByListener)) record->setValue(*message.getData());
    result = *message.getData();
    return ErrorCode::Ok;
}

int readRecord(const LiveObject& object, LiveObjectData& data, const LiveProperty& record,
               Variant& result, Error* err) {
    if (!isReadable(record.getKind())) return ErrorCode::NotFound;
    if (record.has(PropertyFlag::KeptByListener))
        return askListenersForValue(object, data, record.getID(), result, err);
    return record.get(result);
}

int readComponents(const LiveObject& object, const LiveObjectData& data, int id, Variant& result,
                   Error* err) {
    for (ComponentWalk walk(data.components); walk.next();) {
        const InfoType kind = walk->getType(object, id);
        if (isReadable(kind)) return walk->get(object, id, result, err);
        if (kind == InfoType::Hidden || kind == InfoType::Method) break;
    }
    return ErrorCode::NotFound;
}

int writeRecord(LiveObject& object, LiveProperty& record, const Variant& value, Error* err) {
    const InfoType kind = record.getKind();
    if (!isWritable(kind) && !record.has(PropertyFlag::WriteOnce))
        return isReadable(kind) ? ErrorCode::ReadOnly : ErrorCode::NotFound;
    if (!record.has(PropertyFlag::KeptByListener)) return record.put(value);
    LiveMessage message(object, MessageID::Put, record.getID(), value, err);
    return object.broadcast(message) ? message.getError() : ErrorCode::NotFound;
}

int writeComponents(LiveObject& object, const LiveObjectData& data, int id, const Variant& value,
                    Error* err) {
    for (ComponentWalk walk(data.components); walk.next();) {
        const InfoType kind = walk->getType(object, id);
        if (isWritable(kind)) return walk->put(object, id, value, err);
        if (isReadable(kind)) return ErrorCode::ReadOnly;
        if (kind == InfoType::Hidden || kind == InfoType::Method) break;
    }
    return ErrorCode::NotFound;
}

bool isOfSameClass(const LiveObject& self, const LiveObject& object) {
    return &self == &object || self.getClassName() == object.getClassName();
}

int askListenersToCall(const LiveObject& object, LiveObject& self, int id, const Array& args,
                       Variant& result, Error* err) {
    // A `this` of another class is refused only when no listener takes it.
    const int refusal = isOfSameClass(self, object) ? ErrorCode::NotFound : ErrorCode::WrongClass;
    LiveMessage message(self, MessageID::Call, id, args, err);
    if (!object.broadcast(message) || message.getError() == ErrorCode::NotFound) return refusal;
    if (message.getError() == ErrorCode::Ok) result = *message.getData();
    return message.getError();
}

int callRecord(const LiveObject& object, LiveProperty& record, LiveObject& self, const Array& args,
               Variant& result, Error* err) {
    if (!isCallable(record.getKind())) return ErrorCode::NotAFunction;
    if (!record.has(PropertyFlag::KeptByListener)) return record.call(self, args, result, err);
    return askListenersToCall(object, self, record.getID(), args, result, err);
}

int callComponents(const LiveObject& object, const LiveObjectData& data, LiveObject& self, int id,
                   const Array& args, Variant& result, Error* err) {
    for (ComponentWalk walk(data.components); walk.next();) {
        const InfoType kind = walk->getType(object, id);
        if (isCallable(kind)) {
            if (!walk->isGeneric(id) && !isOfSameClass(self, object)) return ErrorCode::WrongClass;
            return walk->call(self, id, args, result, err);
        }
        if (kind == InfoType::Hidden) break;
        if (kind != InfoType::Unknown) return ErrorCode::NotAFunction;
    }
    return ErrorCode::NotFound;
}

} // namespace

int LiveObject::get(int id, Variant& result, Error* err) const {
    result.erase();
    int code = ErrorCode::ObjectInvalid;
    if (isUsable()) {
        const LiveProperty* record = findProperty(id);
        code = record ? readRecord(*this, *data_, *record, result, err)
                      : readComponents(*this, *data_, id, result, err);
    }
    return setError(code, id, err, false);
}

int LiveObject::put(int id, const Variant& value, Error* err) {
    int code = ErrorCode::ObjectInvalid;
    if (isUsable()) {
        LiveProperty* record = findProperty(id);
        code = record ? writeRecord(*this, *record, value, err)
                      : writeComponents(*this, *data_, id, value, err);
        if (code == ErrorCode::Ok) code = invokeAutostore(err);
    }
    return setError(code, id, err, false);
}

int LiveObject::call(int id, const Array& args, Variant& result, Error* err) {
    return apply(*this, id, args, result, err);
}

int LiveObject::apply(LiveObject& self, int id, const Array& args, Variant& result,
                      Error* err) const {
    result.erase();
    int code = ErrorCode::ObjectInvalid;
    if (isUsable()) {
        LiveProperty* record = findProperty(id);
        code = record ? callRecord(*this, *record, self, args, result, err)
                      : callComponents(*this, *data_, self, id, args, result, err);
    }
    return setError(code, id, err, false);
}

} // namespace KrCore
