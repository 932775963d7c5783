#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

namespace KrCore {

/// Holds one reference to a `Refcountable` object, or nothing.
template <class T>
class InterfacePtr {
public:
    constexpr InterfacePtr() noexcept = default;
    constexpr InterfacePtr(std::nullptr_t) noexcept {}

    /// Takes a reference of its own; to take over one that is there already, see `adopt`.
    explicit InterfacePtr(T* object) : object_(object) {
        if (object_) object_->addRef();
    }
    InterfacePtr(const InterfacePtr& other) : InterfacePtr(other.object_) {}
    InterfacePtr(InterfacePtr&& other) noexcept : object_(other.detach()) {}

    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    InterfacePtr(const InterfacePtr<U>& other) : InterfacePtr(static_cast<T*>(other.get())) {}
    template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
    InterfacePtr(InterfacePtr<U>&& other) noexcept : object_(other.detach()) {}

    ~InterfacePtr() {
        if (object_) object_->release();
    }

    InterfacePtr& operator=(InterfacePtr other) noexcept {
        swap(other);
        return *this;
    }

    /// Takes over the reference that `object` arrives with.
    [[nodiscard]] static InterfacePtr adopt(T* object) noexcept {
        InterfacePtr result;
        result.object_ = object;
        return result;
    }

    /// Gives the reference to the caller, who releases it, and holds nothing.
    [[nodiscard]] T* detach() noexcept { return std::exchange(object_, nullptr); }
    void reset() { InterfacePtr().swap(*this); }
    void swap(InterfacePtr& other) noexcept { std::swap(object_, other.object_); }

    T* get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    friend bool operator==(const InterfacePtr& a, const InterfacePtr& b) noexcept {
        return a.object_ == b.object_;
    }
    friend bool operator==(const InterfacePtr& a, const T* b) noexcept { return a.object_ == b; }

private:
    T* object_ = nullptr;
};

} // namespace KrCore
