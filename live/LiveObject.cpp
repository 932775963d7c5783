#include <krcore/live/LiveObject.h>

#include "live/ComponentWalk.h"
#include "live/LiveObjectData.h"
#include "live/LiveObjectFlags.h"
#include "live/PointerWord.h"
#include "live/ScopedMark.h"

#include <krcore/containers/Array.h>
#include <krcore/foundation/ErrorCode.h>
#include <krcore/live/LivePropertyManager.h>

#include <new>
#include <utility>

namespace KrCore {

namespace {

/// An object without memory for its state is made all the same; it is invalid for good.
LiveObjectData* createData() noexcept {
    try {
        return new LiveObjectData;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

unsigned initialFlags(bool dynamic) { return dynamic ? ObjectFlag::Dynamic : 0U; }

} // namespace

LiveObject::LiveObject(const String& className, bool dynamic)
    : flags_(initialFlags(dynamic)), className_(className) {
    data_ = createData(); // last, because the class name may find no memory
}

LiveObject::LiveObject(const char* className, bool dynamic)
    : flags_(initialFlags(dynamic)), className_(className) {
    data_ = createData(); // last, because the class name may find no memory
}

LiveObject::~LiveObject() {
    setAutostore(nullptr, 0);
    // What dies with the properties may still call this class, and finds the object invalid.
    LiveObjectData::end(std::exchange(data_, nullptr));
}

void LiveObject::endWithObject(Array& content) {
    if (data_) data_->leftElements = std::move(content);
}

const void* LiveObject::getAs(int tag) const {
    return const_cast<LiveObject*>(this)->LiveObject::getAs(tag);
}

void* LiveObject::getAs(int tag) {
    if (tag == TypeTag::Object) return this;
    if (tag != TypeTag::Value || !data_) return LiveBase::getAs(tag);
    if (!data_->value) data_->value = new Variant;
    return data_->value;
}

void LiveObject::invalidate() {
    LiveBase::invalidate();
    propertyDefsChanged();
}

void LiveObject::revalidate() {
    LiveBase::revalidate();
    propertyDefsChanged();
}

const String& LiveObject::getClassName() const {
    if (className_.isEmpty()) className_ = "Object";
    return className_;
}

bool LiveObject::operator==(const LiveObject& other) const {
    if (!isUsable() || !other.isUsable()) return false;
    return getClassName() == other.getClassName() && data_->objectID == other.data_->objectID &&
           data_->autostoreTarget == other.data_->autostoreTarget &&
           data_->autostoreID == other.data_->autostoreID &&
           data_->components == other.data_->components;
}

void LiveObject::setData(Root* data) {
    if (data_) data_->hostData = data;
}

Root* LiveObject::getData() const { return data_ ? data_->hostData : nullptr; }

int LiveObject::getObjectID() const { return data_ ? data_->objectID : 0; }

void LiveObject::setObjectID(int id) {
    if (data_) data_->objectID = id;
}

int LiveObject::initialize(const Array&, Error*) { return ErrorCode::Ok; }

void LiveObject::propertyDefsChanged() const {
    if (!data_) return;
    ++data_->definitionStamp;
    data_->classInfo.reset();
}

unsigned LiveObject::getDefinitionStamp() const {
    if (!data_) return 0;
    if (!propertyManager) return data_->definitionStamp;
    // Both only ever advance, so their sum changes with either.
    ScopedLock guard(*propertyManager);
    return data_->definitionStamp + propertyManager->getDefinitionStamp();
}

int LiveObject::reset() {
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    flags_ &= ~ObjectFlag::ClearedByReset;
    for (ComponentWalk walk(data_->components); walk.next();) {
        walk->reset();
        if (walk->hasOperators()) flags_ |= ObjectFlag::HasOperators;
    }
    return deleteDynamicProperties(true);
}

bool LiveObject::hasOperators() const {
    if (flags_ & ObjectFlag::HasOperators) return true;
    if (!propertyManager) return false;
    ScopedLock guard(*propertyManager);
    if (propertyManager->hasOperators()) flags_ |= ObjectFlag::HasOperators;
    return (flags_ & ObjectFlag::HasOperators) != 0;
}

int LiveObject::valueOf(Variant& result) const {
    result.erase();
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    int id = 0;
    InfoType kind = InfoType::Unknown;
    if (getIDForName("valueOf", id, kind, RequestFlag::Library) == ErrorCode::Ok) {
        const_cast<LiveObject*>(this)->call(id, Array(), result, nullptr);
    } else if (data_->value) {
        result = *data_->value;
    }
    return ErrorCode::Ok;
}

int LiveObject::toString(String& result) const {
    result.erase();
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    int id = 0;
    InfoType kind = InfoType::Unknown;
    Variant answer;
    // A method may answer with its own object, whose text would be asked for again.
    if (!data_->isFormingText &&
        getIDForName("toString", id, kind, RequestFlag::Library) == ErrorCode::Ok) {
        const ScopedMark mark(data_->isFormingText);
        if (const_cast<LiveObject*>(this)->call(id, Array(), answer, nullptr) == ErrorCode::Ok) {
            result = answer.getString();
            return ErrorCode::Ok;
        }
    }
    result.print("[object %ls]", getClassName().wstr());
    return ErrorCode::Ok;
}

} // namespace KrCore
