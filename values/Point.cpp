#include <krcore/values/Point.h>

namespace KrCore {

int Point::cmp(const Point& other) const {
    if (other.x > x && other.y > y) return 1;
    return *this == other ? 0 : -1;
}

} // namespace KrCore
