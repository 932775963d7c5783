#pragma once

#include <krcore/foundation/Export.h>

extern "C" {

/// Adds 1 to the 32-bit integer at `counter` and returns the new value. Sequentially consistent in
/// multi-threaded mode, a plain read and write before.
KR_API int KrAtomicInc(void* counter);

/// Subtracts 1; otherwise the same.
KR_API int KrAtomicDec(void* counter);
}
