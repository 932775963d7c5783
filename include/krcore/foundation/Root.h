#pragma once

#include <krcore/foundation/Heap.h>

namespace KrCore {

/// The base of the polymorphic classes: heap allocation and a virtual destructor. Values that must
/// stay one pointer wide (`String`, `SimpleArray`, ...) derive from `Heap` alone.
class KR_API Root : public Heap {
public:
    virtual ~Root();

protected:
    Root() noexcept = default;
};

} // namespace KrCore
