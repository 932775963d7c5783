#include <krcore/live/LiveArray.h>

#include <krcore/foundation/ErrorCode.h>
#include <krcore/foundation/InterfacePtr.h>

#include <utility>

namespace KrCore {

LiveArray::LiveArray(const Array& elements, const char* className, int lengthID, bool readOnly)
    : LiveCollection(className, lengthID, readOnly), elements_(elements) {}

LiveArray::LiveArray(const char* className, int lengthID, bool readOnly)
    : LiveCollection(className, lengthID, readOnly) {}

LiveArray::~LiveArray() { endWithObject(elements_); }

const void* LiveArray::getAs(int tag) const {
    return const_cast<LiveArray*>(this)->LiveArray::getAs(tag);
}

void* LiveArray::getAs(int tag) {
    if (tag == TypeTag::ArrayElements) return &elements_;
    if (tag == TypeTag::Array) return this;
    return LiveCollection::getAs(tag);
}

int LiveArray::clone(LiveObject** result, bool deep) const {
    *result = nullptr;
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    auto copy =
        InterfacePtr<LiveObject>::adopt(new LiveArray(elements_, "", getLengthID(), isReadOnly()));
    const int code = cloneContent(*copy, deep);
    if (code == ErrorCode::Ok) *result = copy.detach();
    return code;
}

int LiveArray::reset() {
    const int code = LiveObject::reset();
    if (code != ErrorCode::Ok) return code;
    elements_.setLength(0);
    return invokeAutostore(nullptr);
}

int LiveArray::getLength(unsigned& length) const {
    length = elements_.length();
    return ErrorCode::Ok;
}

int LiveArray::putLength(unsigned length) {
    if (!isUsable()) return ErrorCode::ObjectInvalid;
    if (isReadOnly()) return ErrorCode::ReadOnly;
    elements_.setLength(length);
    return invokeAutostore(nullptr);
}

int LiveArray::getByIndex(unsigned index, Variant& result, Error* err) const {
    if (isUsable()) {
        result = std::as_const(elements_)[index];
        return ErrorCode::Ok;
    }
    result.erase();
    return setError(ErrorCode::ObjectInvalid, getLengthID(), err, false);
}

void LiveArray::setElement(unsigned index, const Variant& value) {
    Variant content(value); // which may be an element itself
    Variant& element = elements_[index];
    // The old value goes last: a host's object that goes with it may change the array.
    const Variant previous(std::move(element));
    element = std::move(content);
}

int LiveArray::putByIndex(unsigned index, const Variant& value, Error* err) {
    int code = ErrorCode::Ok;
    if (!isUsable()) {
        code = ErrorCode::ObjectInvalid;
    } else if (isReadOnly()) {
        code = ErrorCode::ReadOnly;
    } else {
        setElement(index, value);
        code = invokeAutostore(err);
    }
    return setError(code, static_cast<int>(index), err, true);
}

} // namespace KrCore
