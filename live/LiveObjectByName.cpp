#include <krcore/live/LiveObject.h>

#include <krcore/containers/Array.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/messages/LiveMessage.h>
#include <krcore/values/Error.h>

// Access by name: one look-up, then the form by ID. Its failure is recorded here once more, for a
// derived class that only returns the code.

namespace KrCore {

namespace {

/// Records a failure about a name for which there is no ID.
int recordName(int code, const String& name, Error* err) {
    if (code != ErrorCode::Ok && err && !err->getError()) err->push(code, name, nullptr, true);
    return code;
}

} // namespace

int LiveObject::get(const String& name, Variant& result, Error* err) const {
    int id = 0;
    InfoType kind = InfoType::Unknown;
    const int found = getIDForName(name, id, kind, RequestFlag::Library);
    if (found == ErrorCode::Ok && isReadable(kind))
        return setError(get(id, result, err), id, err, false);
    // The name may be the text of `result`, so it is recorded before that is emptied.
    const int code = found != ErrorCode::Ok
                         ? recordName(found, name, err)
                         : setError(ErrorCode::UnsupportedProperty, id, err, false);
    result.erase();
    return code;
}

int LiveObject::put(const String& name, const Variant& value, int createFlags, Error* err) {
    int id = 0;
    InfoType kind = InfoType::Unknown;
    int code = getIDForName(name, id, kind, RequestFlag::Library);
    if (code == ErrorCode::NotFound && createFlags != -1) {
        kind = InfoType::ReadWrite;
        const int flags = (createFlags & ~PropertyFlag::KindMask) | static_cast<int>(kind);
        code = createIDForName(name, id, flags);
    }
    if (code != ErrorCode::Ok) return recordName(code, name, err);
    if (kind == InfoType::Method) return setError(ErrorCode::UnsupportedProperty, id, err, false);
    if (!isWritable(kind)) return setError(ErrorCode::ReadOnly, id, err, false);
    return setError(put(id, value, err), id, err, false);
}

int LiveObject::call(const String& name, const Array& args, Variant& result, Error* err) {
    int id = 0;
    InfoType kind = InfoType::Unknown;
    const int found = getIDForName(name, id, kind, RequestFlag::Library);
    if (found == ErrorCode::Ok && isCallable(kind))
        return setError(call(id, args, result, err), id, err, false);
    const int code = found != ErrorCode::Ok ? recordName(found, name, err)
                                            : setError(ErrorCode::NotAFunction, id, err, false);
    result.erase();
    return code;
}

int LiveObject::call(const String& name, Error* err) {
    Variant ignored;
    return call(name, Array(), ignored, err);
}

int LiveObject::call(const String& name, Variant& result, Error* err) {
    return call(name, Array(), result, err);
}

int LiveObject::call(const String& name, const Array& args, Error* err) {
    Variant ignored;
    return call(name, args, ignored, err);
}

int LiveObject::call(int id) {
    Variant ignored;
    return call(id, Array(), ignored, nullptr);
}

int LiveObject::call(int id, Variant& result) { return call(id, Array(), result, nullptr); }

int LiveObject::call(int id, const Array& args) {
    Variant ignored;
    return call(id, args, ignored, nullptr);
}

bool LiveObject::canInvoke(const String&) const {
    return isUsable() && isListening(MessageID::Invoke);
}

int LiveObject::invoke(const String& name, const Array& args, Variant& result, Error* err) const {
    const String wanted = name; // which may be the text of `result`
    result.erase();
    if (!isUsable()) return recordName(ErrorCode::ObjectInvalid, wanted, err);
    if (!canInvoke(wanted)) return recordName(ErrorCode::NotAFunction, wanted, err);
    LiveMessage message(*this, MessageID::Invoke, 0, args, err);
    *message.getData() = wanted;
    if (!broadcast(message)) return recordName(ErrorCode::NotAFunction, wanted, err);
    result = *message.getData();
    recordName(message.getError(), wanted, err);
    return err && err->getError() ? err->getCode() : message.getError();
}

int LiveObject::invoke(const String& name, Error* err) const {
    Variant ignored;
    return invoke(name, Array(), ignored, err);
}

int LiveObject::invoke(const String& name, Variant& result, Error* err) const {
    return invoke(name, Array(), result, err);
}

int LiveObject::invoke(const String& name, const Array& args, Error* err) const {
    Variant ignored;
    return invoke(name, args, ignored, err);
}

} // namespace KrCore
