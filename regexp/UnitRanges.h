#pragma once

#include "foundation/WorkStack.h"
#include "regexp/UnitSet.h"

namespace KrCore {

/// Collects the units of a bracket expression. One collector serves a whole pattern.
class UnitRanges {
public:
    void add(unsigned short first, unsigned short last);
    /// Adds the units of a class: `letter` is one of d, s and w, or D, S and W for all others.
    void addClass(char letter);

    /// Sorts what was collected, closes it up and moves it into an empty set.
    void moveTo(UnitSet& set);

private:
    void normalize();

    WorkStack<UnitRange> ranges_;
};

} // namespace KrCore
