#pragma once

#include "live/ScopedLock.h"

#include <krcore/containers/SimpleArray.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/LiveComponent.h>

#include <optional>

namespace KrCore {

/// Steps through the components of an object, from the one added last to the first. The current
/// one is counted and its lock is held. Components may be attached and detached meanwhile: those
/// attached are left out, the others still get their turn.
///
///     for (ComponentWalk walk(data_->components); walk.next();)
///         walk->reset();
class ComponentWalk {
public:
    explicit ComponentWalk(const SimpleArray& components)
        : components_(components), position_(components.length()) {}

    bool next() {
        if (position_ <= 0) return false;
        return advance();
    }
    LiveComponent& operator*() const { return *current_; }
    LiveComponent* operator->() const { return current_.get(); }

private:
    bool advance();

    const SimpleArray& components_;
    int position_; // of the current one
    InterfacePtr<LiveComponent> current_;
    std::optional<ScopedLock> lock_; // given up before the reference
};

} // namespace KrCore
