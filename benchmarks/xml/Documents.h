#pragma once

#include <string>

/// Documents of about 1 MB of UTF-16, each heavy in another way.
struct Document {
    const char* name;
    std::u16string text;
};

/// Short names, little text, a few levels.
Document elementHeavy();
/// Paragraphs of several hundred characters with an entity here and there.
Document textHeavy();
/// Four attributes an element, half of them with a prefix, and local declarations.
Document attributeHeavy();
