#pragma once

namespace KrCore {

/// The value of a hexadecimal digit, or -1.
constexpr int hexDigit(unsigned short unit) {
    if (unit >= '0' && unit <= '9') return unit - '0';
    if (unit >= 'A' && unit <= 'F') return unit - 'A' + 10;
    if (unit >= 'a' && unit <= 'f') return unit - 'a' + 10;
    return -1;
}

/// Writes `count` upper-case digits and returns the place behind them.
constexpr unsigned short* putHex(unsigned short* out, unsigned int value, int count) {
    for (int i = count - 1; i >= 0; --i) {
        *out++ = static_cast<unsigned short>("0123456789ABCDEF"[value >> (4 * i) & 15]);
    }
    return out;
}

} // namespace KrCore
