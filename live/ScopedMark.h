#pragma once

namespace KrCore {

/// Sets a mark for the length of a scope, so that a call that leads back to its beginning ends.
class ScopedMark {
public:
    explicit ScopedMark(bool& mark) : mark_(mark) { mark_ = true; }
    ~ScopedMark() { mark_ = false; }
    ScopedMark(const ScopedMark&) = delete;
    ScopedMark& operator=(const ScopedMark&) = delete;

private:
    bool& mark_;
};

} // namespace KrCore
