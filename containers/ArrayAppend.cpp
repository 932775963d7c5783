#include "containers/ArrayData.h"

#include <krcore/text/String.h>
#include <krcore/values/Point.h>
#include <krcore/values/Rect.h>

#include <algorithm>
#include <utility>

namespace KrCore {

Array& Array::appendValue(Variant&& value) {
    if (data_->length == Data::maxLength) return *this;
    makeUnique();
    Variant& element = data_->make(data_->length);
    element.~Variant();
    new (&element) Variant(std::move(value));
    return *this;
}

Array& Array::operator+=(const Variant& value) {
    const Array* array = value.getArray();
    return appendValue(array ? Variant(array->copyFor(this)) : Variant(value));
}

Array& Array::operator+=(const String& text) { return appendValue(Variant(text)); }

Array& Array::operator+=(const char* text) { return appendValue(Variant(text)); }

Array& Array::operator+=(const unsigned short* text) { return appendValue(Variant(text)); }

Array& Array::operator+=(const char16_t* text) { return appendValue(Variant(text)); }

Array& Array::operator+=(int number) { return appendValue(Variant(number)); }

Array& Array::operator+=(unsigned int number) { return appendValue(Variant(number)); }

Array& Array::operator+=(double number) { return appendValue(Variant(number)); }

Array& Array::operator+=(bool value) { return appendValue(Variant(value)); }

Array& Array::operator+=(LiveObject& object) { return appendValue(Variant(object)); }

Array& Array::operator+=(LiveObject* object) { return appendValue(Variant(object)); }

Array& Array::operator+=(const FileSpec& file) { return appendValue(Variant(file)); }

Array& Array::operator+=(const Point& point) { return appendValue(Variant(point)); }

Array& Array::operator+=(const Rect& rect) { return appendValue(Variant(rect)); }

Array& Array::operator+=(Array& other) {
    const Array source = other.copyFor(this); // The elements of now, also when it is this array.
    const unsigned int start = data_->length;
    const unsigned int count = std::min(source.length(), Data::maxLength - start);
    if (count == 0) return *this;
    insertAt(start, count);
    try {
        data_->growDense(std::min(data_->length, data_->denseLimit));
        source.data_->visitElements([&](unsigned int index, const Variant& element) {
            if (index < count && element.isDefined()) data_->make(start + index) = element;
        });
    } catch (...) {
        data_->cutBack(start);
        throw;
    }
    return *this;
}

} // namespace KrCore
