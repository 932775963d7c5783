#pragma once

#include <krcore/foundation/InterfacePtr.h>
#include <krcore/foundation/WeakRefBase.h>

namespace KrCore {

/// A pointer to a `Refcountable` object that reads null once the object is gone.
template <class T>
class WeakRef : public WeakRefBase {
public:
    constexpr WeakRef() noexcept = default;
    explicit WeakRef(T* target) { assign(target); }

    WeakRef& operator=(T* target) {
        assign(target);
        return *this;
    }

    /// Borrowed: safe to use only as long as no other thread can release the last reference.
    T* get() const { return static_cast<T*>(target()); }
    T* operator->() const { return get(); }
    explicit operator bool() const { return target() != nullptr; }

    /// The object with a reference of its own, or null. Safe against a last release in another
    /// thread.
    [[nodiscard]] InterfacePtr<T> lock() const {
        return InterfacePtr<T>::adopt(static_cast<T*>(acquire()));
    }
};

} // namespace KrCore
