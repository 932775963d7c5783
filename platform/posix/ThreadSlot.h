#pragma once

namespace KrCore::Platform {

// The initial-exec model reads the slot with two instructions. The library's share of the static
// thread area is a few words, which fit into what the loader keeps in reserve for libraries that
// are loaded late.
[[gnu::tls_model("initial-exec")]] extern constinit thread_local void* threadSlotValue;

inline void* threadSlot() { return threadSlotValue; }

} // namespace KrCore::Platform
