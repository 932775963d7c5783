#pragma once

#include "text/UnitBlock.h"

#include <algorithm>
#include <bit>

namespace KrCore {

inline bool isLineEnd(unsigned short unit) { return unit == '\n' || unit == '\r'; }

/// The first CR or LF, or the end.
inline const unsigned short* findLineEnd(const unsigned short* at, const unsigned short* end) {
    const UnitBlock lineFeeds = UnitBlock::of('\n');
    const UnitBlock returns = UnitBlock::of('\r');
    for (; end - at >= UnitBlock::size; at += UnitBlock::size) {
        const UnitBlock block = UnitBlock::load(at);
        const auto mask = ((block == lineFeeds) | (block == returns)).mask();
        if (mask != 0) return at + std::countr_zero(mask) / 2;
    }
    return std::find_if(at, end, isLineEnd);
}

} // namespace KrCore
