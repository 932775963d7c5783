#pragma once

#include <expat.h>

namespace KrCore {

/// The library's heap as Expat takes it: null instead of an exception when memory is exhausted.
extern const XML_Memory_Handling_Suite heapForExpat;

} // namespace KrCore
