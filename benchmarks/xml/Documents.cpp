#include "Documents.h"

namespace {

constexpr std::size_t wantedUnits = 500000;

std::u16string number(std::size_t value) {
    std::u16string digits;
    do {
        digits.insert(digits.begin(), static_cast<char16_t>(u'0' + value % 10));
        value /= 10;
    } while (value > 0);
    return digits;
}

template <class Record>
std::u16string fill(const char16_t* begin, const char16_t* end, Record record) {
    std::u16string text = begin;
    for (std::size_t index = 0; text.size() < wantedUnits; ++index)
        text += record(index);
    return text + end;
}

} // namespace

Document elementHeavy() {
    return {"elements", fill(u"<orders>", u"</orders>", [](std::size_t index) {
                return u"<order><id>" + number(index) + u"</id><item><sku>A" + number(index % 97) +
                       u"</sku><count>2</count></item><paid/></order>\n";
            })};
}

Document textHeavy() {
    const std::u16string sentence =
        u"The quick brown fox jumps over the lazy dog, and \u00E9l\u00E8ves "
        u"&amp; teachers watch it run through the long grass. ";
    return {"text", fill(u"<book>", u"</book>", [&](std::size_t index) {
                std::u16string paragraph = u"<p>";
                for (std::size_t line = 0; line < 5 + index % 4; ++line)
                    paragraph += sentence + (line % 2 == 0 ? u"\n" : u"");
                return paragraph + u"</p>\n";
            })};
}

Document attributeHeavy() {
    return {"attributes",
            fill(u"<s:scene xmlns:s='urn:example:scene' xmlns:x='urn:example:extra'>",
                 u"</s:scene>", [](std::size_t index) {
                     return u"<s:shape id='n" + number(index) + u"' x:layer='background' width='" +
                            number(index % 640) +
                            u"' s:style='stroke:none'><t:mark xmlns:t='urn:example:mark' t:at='" +
                            number(index % 7) + u"'/></s:shape>";
                 })};
}
