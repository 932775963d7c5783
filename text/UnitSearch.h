#pragma once

namespace KrCore {

// Text in text, in time linear in the length of both, whatever they hold. `needleLength` is at
// least 1.

/// The first position in `text` at which `needle` stands, or -1.
int findText(const unsigned short* text, int length, const unsigned short* needle,
             int needleLength) noexcept;

/// The last such position.
int findLastText(const unsigned short* text, int length, const unsigned short* needle,
                 int needleLength) noexcept;

} // namespace KrCore
