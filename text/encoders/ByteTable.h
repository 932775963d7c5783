#pragma once

namespace KrCore {

/// A character set of single bytes, in both directions.
///
/// From a unit to its byte it takes two steps: the unit's high byte selects a block, the low byte a
/// place in it. Block 0 is empty and stands for all rows that the set has nothing in, so a Western
/// set needs some ten blocks of 256 bytes.
struct ByteTable {
    /// What a byte means that means nothing.
    static constexpr unsigned short noUnit = 0xFFFF;
    /// A byte that is no unit's: also 0, which the unit of byte 0 itself tells apart.
    static constexpr int noByte = -1;

    using Block = unsigned char[256];

    unsigned short units[256] = {};
    unsigned char blockOf[256] = {};
    const Block* blocks = nullptr;

    constexpr int byteOf(unsigned short unit) const {
        const unsigned char byte = blocks[blockOf[unit >> 8]][unit & 0xFF];
        return byte != 0 || units[0] == unit ? byte : noByte;
    }

    /// Gives every row that `units` uses a block, and returns how many blocks that makes, the empty
    /// one included.
    constexpr int assignBlocks() {
        int count = 1;
        for (const unsigned short unit : units) {
            unsigned char& block = blockOf[unit >> 8];
            if (unit != noUnit && block == 0) block = static_cast<unsigned char>(count++);
        }
        return count;
    }

    /// Fills zeroed blocks, as many as `assignBlocks` said. The lowest of several bytes for one
    /// unit wins.
    constexpr void fillBlocks(Block* target) {
        for (int byte = 255; byte > 0; --byte) {
            const unsigned short unit = units[byte];
            if (unit == noUnit) continue;
            target[blockOf[unit >> 8]][unit & 0xFF] = static_cast<unsigned char>(byte);
        }
        blocks = target;
    }
};

} // namespace KrCore
