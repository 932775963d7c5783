#pragma once

#include <krcore/foundation/Export.h>
#include <krcore/values/Point.h>

namespace KrCore {

/// A rectangle with its edges. It is empty when an edge lies beyond the opposite one; a rectangle
/// of size zero is not empty and contains its one point.
class KR_API Rect {
public:
    constexpr Rect() = default;
    constexpr Rect(double leftEdge, double topEdge, double rightEdge, double bottomEdge)
        : left(leftEdge), top(topEdge), right(rightEdge), bottom(bottomEdge) {}
    constexpr Rect(const Point& topLeft, const Point& bottomRight)
        : Rect(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y) {}

    constexpr bool operator==(const Rect& other) const {
        return left == other.left && top == other.top && right == other.right &&
               bottom == other.bottom;
    }
    constexpr bool operator!=(const Rect& other) const { return !(*this == other); }
    /// 1, 11, 0 or -1 by the system's own rules. No order to sort by and no test for equality:
    /// a rectangle compared with itself gives -1.
    int cmp(const Rect& other) const;

    bool isEmpty() const { return left > right || top > bottom; }
    bool isInside(double x, double y) const {
        return left <= x && x <= right && top <= y && y <= bottom;
    }
    bool isInside(const Point& point) const { return isInside(point.x, point.y); }
    /// All four coordinates of `other` lie within this rectangle, edges included.
    bool isInside(const Rect& other) const {
        return isInside(other.left, other.top) && isInside(other.right, other.bottom);
    }

    void moveBy(double dx, double dy);
    void moveBy(const Point& offset) { moveBy(offset.x, offset.y); }
    /// Puts the top left corner at the point; width and height stay.
    void moveTo(double x, double y);
    void moveTo(const Point& point) { moveTo(point.x, point.y); }
    /// Moves the right and the bottom edge only.
    void grow(double dx, double dy);
    void grow(const Point& amount) { grow(amount.x, amount.y); }
    /// Moves all four edges inwards.
    void inset(double dx, double dy);
    void inset(const Point& amount) { inset(amount.x, amount.y); }

    /// Becomes what `a` and `b` have in common; true when that is not empty. Either may be this
    /// one.
    bool intersect(const Rect& a, const Rect& b);
    /// Becomes the smallest rectangle around `a` and `b`; true when that is not empty. An empty
    /// operand is not skipped: it becomes the result. Either may be this one.
    bool combine(const Rect& a, const Rect& b);

    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

} // namespace KrCore
