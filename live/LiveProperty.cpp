#include <krcore/live/LiveProperty.h>

#include <krcore/containers/Array.h>
#include <krcore/foundation/ErrorCode.h>

#include <utility>

namespace KrCore {

namespace {

// Kinds 1, 5 and 7 have this bit in common: they are not written after their initialisation.
constexpr unsigned notWrittenBit = 1;

unsigned completed(unsigned flags) {
    if (flags & notWrittenBit) flags |= PropertyFlag::WriteOnce;
    if ((flags & PropertyFlag::KindMask) == 0) flags |= static_cast<unsigned>(InfoType::ReadWrite);
    return flags;
}

} // namespace

LiveProperty::LiveProperty(LiveObject& owner, const String& name, int id, unsigned flags)
    : owner_(&owner), name_(name), id_(id), flags_(completed(flags)) {}

LiveProperty::~LiveProperty() = default;

LiveProperty* LiveProperty::copyFor(LiveObject& owner) const {
    auto* copy = new LiveProperty(owner, name_, id_, flags_);
    try {
        copy->value_ = value_;
    } catch (...) {
        delete copy;
        throw;
    }
    copy->flags_ = flags_;
    return copy;
}

void LiveProperty::detached() {}

int LiveProperty::get(Variant& value) const {
    value = value_;
    return ErrorCode::Ok;
}

int LiveProperty::put(const Variant& value) {
    if ((flags_ & notWrittenBit) && !has(PropertyFlag::WriteOnce)) return ErrorCode::ReadOnly;
    Variant content(value); // what may fail comes before the one write is used up
    // Kept: even a read-only property takes one write, its initialisation
    // (held by LiveObjectTest.AllowsOneWriteToReadOnlyProperties).
    flags_ &= ~static_cast<unsigned>(PropertyFlag::WriteOnce);
    takeValue(content);
    return ErrorCode::Ok;
}

void LiveProperty::setValue(const Variant& value) {
    Variant content(value);
    takeValue(content);
}

void LiveProperty::takeValue(Variant& content) {
    // The old value goes last: a host's object that goes with it may take this record along.
    const Variant previous(std::move(value_));
    value_ = std::move(content);
}

int LiveProperty::call(LiveObject&, const Array&, Variant& result, Error*) {
    result.erase();
    return ErrorCode::NotAFunction;
}

} // namespace KrCore
