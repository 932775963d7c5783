#include <krcore/values/JSObject.h>

#include <krcore/foundation/ErrorCode.h>
#include <krcore/text/String.h>

namespace KrCore {

JSObject::~JSObject() = default;

int JSObject::getObjectID() const { return 0; }

void JSObject::getClassName(String& name) const { name = "Object"; }

int JSObject::defaultValue(Variant&) const { return ErrorCode::NoValue; }

int JSObject::toString(String&) const { return ErrorCode::NoValue; }

int JSObject::getProperties(THashTable<Variant>&, int, Error*) const {
    return ErrorCode::NotImplemented;
}

int JSObject::setProperties(const THashTable<Variant>&, Error*) {
    return ErrorCode::NotImplemented;
}

KrScript::Engine* JSObject::getEngine() const { return nullptr; }

} // namespace KrCore
