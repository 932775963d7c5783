#pragma once

#include "foundation/WorkStack.h"
#include "xml/XMLTree.h"

namespace KrCore {

/// Calls `visit(XML& node)` for all children below `top`, each before its own, without recursion. A
/// node for which it returns false is not entered. `visit` may change the node's own arrays, but no
/// other's.
template <class Visit>
void walkDescendants(const XML& top, Visit&& visit) {
    struct Place {
        const XML* parent;
        int next;
    };
    WorkStack<Place> places;
    places.push({&top, 0});
    while (!places.isEmpty()) {
        Place& place = places.top();
        XML* child = place.parent->getChild(place.next++);
        if (!child) {
            places.pop();
            continue;
        }
        if (visit(*child) && child->length() > 0) places.push({child, 0});
    }
}

} // namespace KrCore
