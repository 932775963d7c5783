#pragma once

#include <krcore/foundation/Export.h>

namespace KrCore {

class Lock;
struct Context;

/// The library-wide record.
struct KR_API Globals {
    /// The 15 locks of the library; null while it runs single-threaded.
    Lock* locks = nullptr;
    /// When not null, the heap uses this context in every thread instead of the calling thread's
    /// own. Null again when that context ends.
    Context* context = nullptr;

    /// The one instance.
    static Globals& get();
};

} // namespace KrCore
