#include <krcore/values/ErrorInfo.h>

#include <krcore/foundation/Cloneable.h>
#include <krcore/values/Variant.h>

namespace KrCore {

ErrorInfo::ErrorInfo(int code, const String& text) : text_(text), code_(code) {}

ErrorInfo::~ErrorInfo() {
    delete errorData_.load();
    delete data_;
}

const Variant* ErrorInfo::getErrorData() const {
    Variant* present = errorData_.load();
    if (present) return present;
    auto* made = new Variant;
    // Another thread may ask a copy of the same error.
    if (errorData_.compare_exchange_strong(present, made)) return made;
    delete made;
    return present;
}

void ErrorInfo::setData(const Cloneable& data) {
    Cloneable* copy = nullptr;
    if (data.clone(&copy, true) == 0) data_ = copy;
}

void ErrorInfo::setErrorData(const Variant& value) { errorData_ = new Variant(value); }

} // namespace KrCore
