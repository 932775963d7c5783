#include <krcore/values/Variant.h>

#include <krcore/containers/SimpleArray.h>
#include <krcore/containers/THashTable.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/LiveObject.h>
#include <krcore/values/Error.h>
#include <krcore/values/JSObject.h>

#include <memory>
#include <mutex>

namespace KrCore {

namespace {

int record(int code, const Variant& value, Error* err) {
    if (code != 0 && err && err->getCode() == 0) err->push(code, value, nullptr);
    return code;
}

void store(THashTable<Variant>& properties, const String& name, const Variant& value) {
    if (Variant* known = properties.find(name)) {
        *known = value;
        return;
    }
    std::unique_ptr<Variant> added(new Variant(value));
    properties.set(name, added.get());
    (void)added.release();
}

int readProperties(LiveObject& object, THashTable<Variant>& properties, int flags, Error* err) {
    SimpleArray ids;
    if (const int code = object.enumerate(ids, flags)) return record(code, Variant(object), err);
    for (int index = 0; index < ids.length(); ++index) {
        const int id = static_cast<int>(std::as_const(ids)[index]);
        String name;
        Variant value;
        if (!isReadable(object.getType(id))) continue;
        if (object.getNameForID(id, name, RequestFlag::Library) != 0) continue;
        if (const int code = object.get(id, value, err)) return code;
        store(properties, name, value);
    }
    return ErrorCode::Ok;
}

int writeProperties(LiveObject& object, const THashTable<Variant>& properties, Error* err) {
    // A share: writing may run scripts that change the table.
    const THashTable<Variant> source(properties);
    TSimpleArray<const String> names;
    source.getKeys(names);
    for (int index = 0; index < names.length(); ++index) {
        const String& name = *std::as_const(names)[index];
        if (const int code = object.put(name, *source.find(name), 0, err)) return code;
    }
    return ErrorCode::Ok;
}

} // namespace

int Variant::getObjectProperties(THashTable<Variant>& properties, int flags, Error* err) const {
    if (const JSObject* object = getJSObject())
        return object->getProperties(properties, flags, err);
    const InterfacePtr<LiveObject> object(getLiveObject());
    if (!object) return record(ErrorCode::NotAnObject, *this, err);
    const std::lock_guard<const Lockable> guard(*object);
    return readProperties(*object, properties, flags, err);
}

int Variant::setObjectProperties(const THashTable<Variant>& properties, Error* err) {
    if (JSObject* object = getJSObject()) return object->setProperties(properties, err);
    const InterfacePtr<LiveObject> object(getLiveObject());
    if (!object) return record(ErrorCode::NotAnObject, *this, err);
    const std::lock_guard<const Lockable> guard(*object);
    return writeProperties(*object, properties, err);
}

} // namespace KrCore
