#pragma once

#include <krcore/containers/SimpleArray.h>
#include <krcore/containers/SparseArray.h>
#include <krcore/foundation/InterfacePtr.h>
#include <krcore/live/LiveObject.h>

namespace KrCore {

/// One deep clone, from the object that was asked for down to the last one that it leads to: which
/// objects have been copied already, so that each is copied once and rings come out as rings.
class CloneSession {
public:
    CloneSession() = default;
    ~CloneSession();
    CloneSession(const CloneSession&) = delete;
    CloneSession& operator=(const CloneSession&) = delete;

    LiveObject* copyOf(const LiveObject& original) const;
    void note(const LiveObject& original, LiveObject& copy);

    /// Copies of a session that does not get this far may hold each other; it empties them.
    void succeed() { hasSucceeded_ = true; }

    /// Levels of objects that are being copied, one within the other.
    static constexpr int deepest = 512;
    int depth = 0;

private:
    SparseArray copies_;  // address of the original to its copy
    SimpleArray counted_; // originals and copies
    bool hasSucceeded_ = false;
};

} // namespace KrCore
