#include "xml/Escaping.h"

#include "text/UnitBlock.h"

#include <bit>
#include <initializer_list>

namespace KrCore {

namespace {

/// Units below 64, one bit each.
constexpr std::uint64_t bitsOf(std::initializer_list<char> units) {
    std::uint64_t bits = 0;
    for (const char unit : units)
        bits |= std::uint64_t(1) << unit;
    return bits;
}

constexpr std::uint64_t inText = bitsOf({'&', '<', '>'});
constexpr std::uint64_t inAttributes = bitsOf({'\t', '\n', '\r', '"', '&', '<'});

bool isSpecial(unsigned short unit, std::uint64_t specials) noexcept {
    return unit < 64 && ((specials >> unit) & 1) != 0;
}

template <char... units>
UnitBlock anyOf(UnitBlock block) noexcept {
    return (... | (block == UnitBlock::of(units)));
}

std::uint32_t specialMask(const unsigned short* units, EscapeKind kind) noexcept {
    const UnitBlock block = UnitBlock::load(units);
    return kind == EscapeKind::Text ? anyOf<'&', '<', '>'>(block).mask()
                                    : anyOf<'\t', '\n', '\r', '"', '&', '<'>(block).mask();
}

const unsigned short* findSpecial(UnitRange text, EscapeKind kind) noexcept {
    const unsigned short* unit = text.begin;
    for (; text.end - unit >= UnitBlock::size; unit += UnitBlock::size) {
        const std::uint32_t mask = specialMask(unit, kind);
        if (mask != 0) return unit + std::countr_zero(mask) / 2;
    }
    const std::uint64_t specials = kind == EscapeKind::Text ? inText : inAttributes;
    while (unit != text.end && !isSpecial(*unit, specials))
        ++unit;
    return unit;
}

void appendReference(UnitBuffer& out, unsigned short unit) {
    switch (unit) {
    case '&':
        return out.append("&amp;");
    case '<':
        return out.append("&lt;");
    case '>':
        return out.append("&gt;");
    case '"':
        return out.append("&quot;");
    case '\t':
        return out.append("&#x9;");
    case '\n':
        return out.append("&#xA;");
    default:
        return out.append("&#xD;");
    }
}

/// Short texts, mostly names: checked while they are copied. Returns how many units got through.
int appendWhilePlain(UnitBuffer& out, UnitRange text, std::uint64_t specials) {
    unsigned short* room = out.extend(text.length());
    int count = 0;
    while (count < text.length() && !isSpecial(text.begin[count], specials)) {
        room[count] = text.begin[count];
        ++count;
    }
    out.shrinkBy(text.length() - count);
    return count;
}

} // namespace

void appendEscaped(UnitBuffer& out, UnitRange text, EscapeKind kind) {
    if (text.length() < 2 * UnitBlock::size)
        text.begin += appendWhilePlain(out, text, kind == EscapeKind::Text ? inText : inAttributes);
    while (!text.isEmpty()) {
        const unsigned short* special = findSpecial(text, kind);
        out.append(UnitRange{text.begin, special});
        if (special == text.end) return;
        appendReference(out, *special);
        text.begin = special + 1;
    }
}

} // namespace KrCore
