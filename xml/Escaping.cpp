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

bool isSpecial(unsigned short unit, std::uint64_t specials) noexcept {
    return unit < 64 && ((specials >> unit) & 1) != 0;
}

template <char... units>
UnitBlock anyOf(UnitBlock block) noexcept {
    return (... | (block == UnitBlock::of(units)));
}

template <EscapeKind kind>
struct Specials;

template <>
struct Specials<EscapeKind::Text> {
    static constexpr std::uint64_t bits = bitsOf({'&', '<', '>'});
    static std::uint32_t mask(UnitBlock block) noexcept {
        return anyOf<'&', '<', '>'>(block).mask();
    }
};

template <>
struct Specials<EscapeKind::Attribute> {
    static constexpr std::uint64_t bits = bitsOf({'\t', '\n', '\r', '"', '&', '<'});
    static std::uint32_t mask(UnitBlock block) noexcept {
        return anyOf<'\t', '\n', '\r', '"', '&', '<'>(block).mask();
    }
};

/// Copies a block; returns the number of units before the first special one, `UnitBlock::size` when
/// there is none.
template <EscapeKind kind>
int copyBlock(unsigned short* out, const unsigned short* units) noexcept {
    const UnitBlock block = UnitBlock::load(units);
    block.store(out);
    const std::uint32_t mask = Specials<kind>::mask(block);
    return mask == 0 ? UnitBlock::size : std::countr_zero(mask) / 2;
}

/// Copies the text up to its first special unit, and returns the number of units. What follows in
/// the room for the whole text is overwritten at will.
template <EscapeKind kind>
int copyPlain(unsigned short* out, UnitRange text) noexcept {
    const int length = text.length();
    int done = 0;
    if (length < UnitBlock::size) {
        while (done < length && !isSpecial(text.begin[done], Specials<kind>::bits)) {
            out[done] = text.begin[done];
            ++done;
        }
        return done;
    }
    for (; length - done >= UnitBlock::size; done += UnitBlock::size) {
        const int plain = copyBlock<kind>(out + done, text.begin + done);
        if (plain < UnitBlock::size) return done + plain;
    }
    // The last block overlaps the one before, in which nothing special is left.
    done = length - UnitBlock::size;
    return done + copyBlock<kind>(out + done, text.begin + done);
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

template <EscapeKind kind>
void appendText(UnitBuffer& out, UnitRange text) {
    while (!text.isEmpty()) {
        const int plain = copyPlain<kind>(out.extend(text.length()), text);
        out.shrinkBy(text.length() - plain);
        text.begin += plain;
        if (text.isEmpty()) return;
        appendReference(out, *text.begin);
        ++text.begin;
    }
}

} // namespace

void appendEscaped(UnitBuffer& out, UnitRange text, EscapeKind kind) {
    if (kind == EscapeKind::Text) {
        appendText<EscapeKind::Text>(out, text);
    } else {
        appendText<EscapeKind::Attribute>(out, text);
    }
}

} // namespace KrCore
