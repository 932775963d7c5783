#pragma once

#include <krcore/foundation/Heap.h>

#include <cstddef>

namespace KrCore {

/// What one group of a pattern has captured: a range of the subject, in 16-bit units. Lists of them
/// come from the library's heap.
struct Capture {
    int start = -1; ///< The first unit; -1 when the group is unset.
    int end = 0;    ///< One past the last unit. Without meaning while the group is unset.

    static void* operator new[](std::size_t byteCount) { return Heap::operator new(byteCount); }
    static void operator delete[](void* list) { Heap::operator delete(list); }
};

} // namespace KrCore
