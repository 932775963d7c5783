#include "live/ComponentWalk.h"

#include "live/PointerWord.h"

#include <algorithm>

namespace KrCore {

bool ComponentWalk::advance() {
    lock_.reset();
    if (current_) {
        const int found = components_.indexOf(wordOf(current_.get()));
        // Never upwards: one that was attached anew meanwhile would start the walk again.
        if (found >= 0) position_ = std::min(position_, found);
        current_.reset();
    }
    // Releasing may have run the component's destructor, which may have detached others.
    position_ = std::min(position_, components_.length()) - 1;
    if (position_ < 0) return false;
    current_ = InterfacePtr<LiveComponent>(pointerOf<LiveComponent>(components_[position_]));
    lock_.emplace(*current_);
    return true;
}

} // namespace KrCore
