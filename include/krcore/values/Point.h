#pragma once

#include <krcore/foundation/Export.h>

namespace KrCore {

/// A point in the plane.
class KR_API Point {
public:
    constexpr Point() = default;
    constexpr Point(double xPosition, double yPosition) : x(xPosition), y(yPosition) {}

    constexpr bool operator==(const Point& other) const { return x == other.x && y == other.y; }
    constexpr bool operator!=(const Point& other) const { return !(*this == other); }
    /// 1 when `other` lies beyond this point in both directions, 0 when it is the same point, else
    /// -1. No order to sort by: two points can each be -1 to the other.
    int cmp(const Point& other) const;

    double x = 0;
    double y = 0;
};

} // namespace KrCore
