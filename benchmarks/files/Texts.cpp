#include "Texts.h"

#include <krcore/text/StringConversions.h>

#include <cstddef>
#include <span>

namespace {

constexpr std::size_t wantedBytes = 10'000'000;
constexpr std::size_t shortestLine = 40;

using Words = std::span<const char16_t* const>;

/// The same numbers in every run.
class Numbers {
public:
    std::size_t below(std::size_t end) {
        state_ = state_ * 1664525U + 1013904223U;
        return (state_ >> 8) % end;
    }

private:
    unsigned int state_ = 1;
};

std::u16string makeLine(Words words, const char16_t* separator, Numbers& numbers) {
    const std::size_t wanted = shortestLine + numbers.below(shortestLine - 10);
    std::u16string line;
    while (line.size() < wanted) {
        if (!line.empty()) line += separator;
        line += words[numbers.below(words.size())];
    }
    return line;
}

Text makeText(Words words, const char16_t* separator) {
    Text text;
    Numbers numbers;
    while (text.utf8.size() < wantedBytes) {
        text.lines.push_back(makeLine(words, separator, numbers));
        const std::u16string& line = text.lines.back();
        text.whole += line + u'\n';
        text.utf8 += KrCore::toUtf8(KrCore::fromUtf16(line)) + '\n';
    }
    return text;
}

constexpr const char16_t* europeanWords[] = {
    u"Voix",
    u"ambigu\u00EB",
    u"d'un",
    u"c\u0153ur",
    u"qui,",
    u"au",
    u"z\u00E9phyr,",
    u"pr\u00E9f\u00E8re",
    u"les",
    u"jattes",
    u"de",
    u"kiwis.",
    u"Zw\u00F6lf",
    u"Boxk\u00E4mpfer",
    u"jagen",
    u"Viktor",
    u"quer",
    u"\u00FCber",
    u"den",
    u"gro\u00DFen",
    u"Deich.",
    u"El",
    u"ping\u00FCino",
    u"Wenceslao",
    u"hizo",
    u"kil\u00F3metros",
    u"bajo",
    u"lluvia",
    u"y",
    u"fr\u00EDo.",
};

constexpr const char16_t* cjkWords[] = {
    u"\u65E5\u672C\u8A9E",
    u"\u306E",
    u"\u6587\u7AE0",
    u"\u306F",
    u"\u3001",
    u"\u6F22\u5B57",
    u"\u3068",
    u"\u4EEE\u540D",
    u"\u3067",
    u"\u66F8\u304B\u308C\u308B",
    u"\u3002",
    u"\u4E2D\u6587",
    u"\u6587\u672C",
    u"\uD55C\uAD6D\uC5B4",
    u"\u5B57\u7B26",
};

} // namespace

const Text& europeanText() {
    static const Text text = makeText(europeanWords, u" ");
    return text;
}

const Text& cjkText() {
    static const Text text = makeText(cjkWords, u"");
    return text;
}
