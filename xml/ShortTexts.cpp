#include "xml/ShortTexts.h"

namespace KrCore {

std::uint32_t hashOf(UnitRange text) noexcept {
    std::uint32_t hash = 0;
    for (const unsigned short* unit = text.begin; unit != text.end; ++unit)
        hash = hash * 31 + *unit;
    return hash ^ (hash >> 8);
}

String ShortTexts::find(UnitRange text) {
    if (text.length() > longest) return String(text.begin, text.length());
    String& kept = texts_[hashOf(text) % size];
    if (!isSameText(kept, text)) kept = String(text.begin, text.length());
    return kept;
}

} // namespace KrCore
