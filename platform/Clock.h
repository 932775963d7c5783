#pragma once

#include <cstdint>

namespace KrCore::Platform {

/// The high-resolution counter never goes back. Its counts per second; 0 when the system has none.
double counterFrequency();
std::int64_t counterValue();

/// Milliseconds since the system started, wrapping at 32 bits.
std::uint32_t tickMilliseconds();

/// Milliseconds since 1970-01-01 00:00 UTC.
std::int64_t systemMilliseconds();

} // namespace KrCore::Platform
