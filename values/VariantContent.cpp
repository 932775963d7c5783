#include "values/ObjectIdentity.h"

#include <krcore/containers/Array.h>
#include <krcore/files/FileSpec.h>
#include <krcore/foundation/Cloneable.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/LiveCollection.h>
#include <krcore/regexp/RegExp.h>
#include <krcore/values/JSObject.h>
#include <krcore/values/Point.h>
#include <krcore/values/Rect.h>
#include <krcore/values/UnitValue.h>

#include <memory>

namespace KrCore {

namespace {

/// `Point` and `Rect` have no base that would bring them into the library's heap.
template <class T>
T* newPlain(const T& value) {
    return ::new (Heap::operator new(sizeof(T))) T(value);
}

template <class T>
void deletePlain(T* value) noexcept {
    Heap::operator delete(value);
}

Root* cloneData(const Root* data) {
    const auto* source = dynamic_cast<const Cloneable*>(data);
    Cloneable* copy = nullptr;
    if (!source || source->clone(&copy, true) != 0) return nullptr;
    return copy;
}

} // namespace

Variant::Content Variant::copyContentFor(const Variant& owner) const {
    Content copy = content();
    switch (type_) {
    case VariantType::Object:
        copyObject(copy);
        break;
    case VariantType::LiveObject:
        payload_.liveObject->addRef();
        break;
    case VariantType::Point:
        copy.payload.point = newPlain(*payload_.point);
        break;
    case VariantType::Rect:
        copy.payload.rect = newPlain(*payload_.rect);
        break;
    case VariantType::Array:
        copy.payload.array = new Array(payload_.array->copyFor(&owner));
        break;
    case VariantType::UnitValue:
        copy.payload.unitValue = new UnitValue(*payload_.unitValue);
        break;
    case VariantType::FileSpec:
        copy.payload.fileSpec = new FileSpec(*payload_.fileSpec);
        break;
    case VariantType::RegExp:
        copy.payload.regExp = new RegExp(*payload_.regExp);
        break;
    case VariantType::Undefined:
    case VariantType::Null:
    case VariantType::Bool:
    case VariantType::Number:
    case VariantType::String:
        break;
    }
    return copy;
}

/// Data that cannot be cloned stays behind: the copy keeps ID and class name only.
void Variant::copyObject(Content& copy) const {
    std::unique_ptr<ObjectIdentity> identity(
        new ObjectIdentity(payload_.identity->id, payload_.identity->className));
    copy.companion.objectData = cloneData(companion_.objectData);
    copy.payload.identity = identity.release();
}

void Variant::destroyContent(const Content& content) noexcept {
    switch (content.type) {
    case VariantType::Object:
        delete content.payload.identity;
        delete content.companion.objectData;
        break;
    case VariantType::LiveObject:
        content.payload.liveObject->release();
        break;
    case VariantType::Point:
        deletePlain(content.payload.point);
        break;
    case VariantType::Rect:
        deletePlain(content.payload.rect);
        break;
    case VariantType::Array:
        delete content.payload.array;
        break;
    case VariantType::UnitValue:
        delete content.payload.unitValue;
        break;
    case VariantType::FileSpec:
        delete content.payload.fileSpec;
        break;
    case VariantType::RegExp:
        delete content.payload.regExp;
        break;
    case VariantType::Undefined:
    case VariantType::Null:
    case VariantType::Bool:
    case VariantType::Number:
    case VariantType::String:
        break;
    }
}

/// The new value is in place before the old one goes, as the old one may take other code along:
/// destructors of hosts, and the variant itself when it lies in what it held.
void Variant::install(const Content& newContent) noexcept {
    const Content oldContent = content();
    if (type_ == VariantType::String) text_->erase();
    type_ = newContent.type;
    payload_ = newContent.payload;
    companion_ = newContent.companion;
    attributes_ &= Unassigned;
    destroyContent(oldContent);
}

void Variant::installText(String& text) {
    String& slot = textSlot();
    const Content oldContent = content();
    type_ = VariantType::String;
    attributes_ &= Unassigned;
    slot = std::move(text);
    if (oldContent.type >= VariantType::Object) destroyContent(oldContent);
}

String& Variant::textSlot() const {
    if (!text_) text_ = new String;
    return *text_;
}

void Variant::setPoint(const Point& point) {
    install({VariantType::Point, {.point = newPlain(point)}, {}});
}

void Variant::setRect(const Rect& rect) {
    install({VariantType::Rect, {.rect = newPlain(rect)}, {}});
}

void Variant::setArray(const Array& array) {
    install({VariantType::Array, {.array = new Array(array.copyFor(this))}, {}});
}

void Variant::setFileSpec(const FileSpec& file) {
    install({VariantType::FileSpec, {.fileSpec = new FileSpec(file)}, {}});
}

void Variant::setRegExp(const RegExp& expression) {
    install({VariantType::RegExp, {.regExp = new RegExp(expression)}, {}});
}

void Variant::setUnitValue(const UnitValue& value) {
    install({VariantType::UnitValue, {.unitValue = new UnitValue(value)}, {}});
}

void Variant::setLiveObject(LiveObject& object, int info) {
    object.addRef();
    install({VariantType::LiveObject, {.liveObject = &object}, {.info = info}});
}

void Variant::setLiveObject(LiveObject* object, int info) {
    if (!object) return setNull();
    setLiveObject(*object, info);
}

void Variant::setJSObject(JSObject* object) {
    if (!object) return setNull();
    std::unique_ptr<JSObject> adopted(object == getObjectData() ? nullptr : object);
    String className;
    object->getClassName(className);
    const int id = object->getObjectID();
    (void)adopted.release();
    setObject(id, className, object);
}

void Variant::setJSObject(const JSObject& object) {
    String className;
    object.getClassName(className);
    setObject(object.getObjectID(), className, cloneData(&object));
}

void Variant::setObject(int id, const String& className, Root* data) {
    const bool isOwnData = data && data == getObjectData();
    std::unique_ptr<Root> adopted(isOwnData ? nullptr : data);
    auto* identity = new ObjectIdentity(id, className);
    if (isOwnData) companion_.objectData = nullptr;
    (void)adopted.release();
    install({VariantType::Object, {.identity = identity}, {.objectData = data}});
}

void Variant::setObjectData(Root* data) {
    if (data && data == getObjectData()) return;
    std::unique_ptr<Root> adopted(data);
    if (type_ != VariantType::Object) setObjectID(0);
    attributes_ &= Unassigned;
    delete std::exchange(companion_.objectData, adopted.release());
}

void Variant::setObjectID(int id) {
    if (type_ != VariantType::Object) return setObject(id, String("Object"), nullptr);
    attributes_ &= Unassigned;
    payload_.identity->id = id;
}

bool Variant::isValidObject() const {
    if (type_ == VariantType::LiveObject) return payload_.liveObject->isValid();
    return getObjectData() || getObjectID() != 0;
}

bool Variant::hasUnassignedObjectData() const { return getObjectData() && getObjectID() == 0; }

const Point* Variant::getPoint() const {
    return type_ == VariantType::Point ? payload_.point : nullptr;
}

const Rect* Variant::getRect() const {
    return type_ == VariantType::Rect ? payload_.rect : nullptr;
}

const Array* Variant::getArray() const {
    return type_ == VariantType::Array ? payload_.array : nullptr;
}

void Variant::getArray(Array& array) const {
    if (const Array* own = getArray()) {
        array = *own;
        return;
    }
    Variant copy(*this);
    copy.convert(VariantType::Array);
    array = std::move(*copy.payload_.array);
}

const UnitValue* Variant::getUnitValue() const {
    return type_ == VariantType::UnitValue ? payload_.unitValue : nullptr;
}

const FileSpec* Variant::getFileSpec() const {
    return type_ == VariantType::FileSpec ? payload_.fileSpec : nullptr;
}

const RegExp* Variant::getRegExp() const {
    return type_ == VariantType::RegExp ? payload_.regExp : nullptr;
}

LiveObject* Variant::getLiveObject() const {
    return type_ == VariantType::LiveObject ? payload_.liveObject : nullptr;
}

int Variant::getLiveObjectInfo() const {
    return type_ == VariantType::LiveObject ? companion_.info : 0;
}

LiveCollection* Variant::getLiveCollection() const {
    if (type_ != VariantType::LiveObject) return nullptr;
    return static_cast<LiveCollection*>(payload_.liveObject->getAs(TypeTag::Collection));
}

bool Variant::getAsLiveObject(InterfacePtr<LiveObject>& object) const {
    object = InterfacePtr<LiveObject>(getLiveObject());
    return object.get() != nullptr;
}

bool Variant::getAsLiveCollection(InterfacePtr<LiveCollection>& collection) const {
    collection = InterfacePtr<LiveCollection>(getLiveCollection());
    return collection.get() != nullptr;
}

JSObject* Variant::getJSObject() const { return dynamic_cast<JSObject*>(getObjectData()); }

KrScript::Engine* Variant::getMarlscriptEngine() const {
    const JSObject* object = getJSObject();
    return object ? object->getEngine() : nullptr;
}

Root* Variant::getObjectData() const {
    return type_ == VariantType::Object ? companion_.objectData : nullptr;
}

int Variant::getObjectID() const {
    return type_ == VariantType::Object ? payload_.identity->id : 0;
}

const String& Variant::getObjectClassName() const {
    if (type_ == VariantType::Object) return payload_.identity->className;
    if (type_ == VariantType::LiveObject) return payload_.liveObject->getClassName();
    return String::emptyString();
}

} // namespace KrCore
