#pragma once

#include "xml/UnitBuffer.h"

namespace KrCore {

/// Kept: text leaves `"` as it is, attribute values leave ">" and "'" (held by
/// XMLPrint.EscapesWhatEachPlaceNeeds). U+000D stays in text, where the parser keeps written line
/// ends, but an attribute would lose it.
enum class EscapeKind { Text, Attribute };

/// Appends `text` as it must be written in text and names, or in an attribute's value.
void appendEscaped(UnitBuffer& out, UnitRange text, EscapeKind kind);

inline void appendEscaped(UnitBuffer& out, const String& text, EscapeKind kind) {
    appendEscaped(out, {text.begin(), text.end()}, kind);
}

} // namespace KrCore
