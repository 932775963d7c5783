#include "xml/ShortTexts.h"

namespace KrCore {

String ShortTexts::find(UnitRange text) {
    if (text.length() > longest) return String(text.begin, text.length());
    String& kept = texts_[hashOf(text) % size];
    if (!isSameText(kept, text)) kept = String(text.begin, text.length());
    return kept;
}

} // namespace KrCore
