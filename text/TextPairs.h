#pragma once

namespace KrCore {

class String;

/// Turns every pair that begins with "\" or "^" into the character it stands for. The pairs are
/// part of the format of localizable texts.
void replaceTextPairs(String& text);

} // namespace KrCore
