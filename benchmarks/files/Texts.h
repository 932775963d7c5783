#pragma once

#include <string>
#include <vector>

/// About 10 MB of UTF-8 in lines of 40 to 80 characters.
struct Text {
    std::vector<std::u16string> lines;
    /// All lines, with "\n" behind each.
    std::u16string whole;
    std::string utf8;
};

/// Mostly ASCII, with an accented letter in every other word.
const Text& europeanText();
/// Three bytes a character.
const Text& cjkText();
