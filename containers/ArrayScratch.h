#pragma once

#include <krcore/foundation/Heap.h>
#include <krcore/values/Variant.h>

namespace KrCore {

struct ArrayPrinting;

/// What a thread keeps for all its arrays.
struct ArrayScratch : Heap {
    Variant undefined;                       ///< What missing elements read as.
    Variant absorbed;                        ///< What is written to an index that cannot be.
    const ArrayPrinting* printing = nullptr; ///< The innermost text in progress.

    /// The calling thread's own.
    static ArrayScratch& get();
};

} // namespace KrCore
