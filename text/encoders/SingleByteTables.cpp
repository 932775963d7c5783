#include "text/encoders/SingleByteTables.h"

namespace KrCore {

namespace {

/// Bytes 80 to 9F. Five of them are not assigned and stand for the control characters of the same
/// value, so that all bytes make the round trip.
constexpr unsigned short cp1252Controls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

/// Bytes 80 to FF. DB is the euro sign, which took the place of the currency sign; F0 lies in the
/// private use area.
constexpr unsigned short macRomanHigh[128] = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1, 0x00E0, 0x00E2, 0x00E4, 0x00E3,
    0x00E5, 0x00E7, 0x00E9, 0x00E8, 0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3,
    0x00F2, 0x00F4, 0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC, 0x2020, 0x00B0, 0x00A2, 0x00A3,
    0x00A7, 0x2022, 0x00B6, 0x00DF, 0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8,
    0x221E, 0x00B1, 0x2264, 0x2265, 0x00A5, 0x00B5, 0x2202, 0x2211, 0x220F, 0x03C0, 0x222B, 0x00AA,
    0x00BA, 0x03A9, 0x00E6, 0x00F8, 0x00BF, 0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB,
    0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5, 0x0152, 0x0153, 0x2013, 0x2014, 0x201C, 0x201D,
    0x2018, 0x2019, 0x00F7, 0x25CA, 0x00FF, 0x0178, 0x2044, 0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02,
    0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1, 0x00CB, 0x00C8, 0x00CD, 0x00CE,
    0x00CF, 0x00CC, 0x00D3, 0x00D4, 0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9, 0x0131, 0x02C6, 0x02DC,
    0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7,
};

/// Bytes other than the given ones, which begin with `first`, stand for the unit of the same value.
template <int count>
constexpr ByteTable makeTable(const unsigned short (&units)[count], int first) {
    ByteTable table;
    for (int byte = 0; byte < 256; ++byte) {
        const bool isGiven = byte >= first && byte < first + count;
        table.units[byte] = isGiven ? units[byte - first] : static_cast<unsigned short>(byte);
    }
    table.assignBlocks();
    return table;
}

constexpr ByteTable makeAsciiTable() {
    ByteTable table;
    for (int byte = 0; byte < 256; ++byte)
        table.units[byte] = byte < 0x80 ? static_cast<unsigned short>(byte) : ByteTable::noUnit;
    table.assignBlocks();
    return table;
}

constexpr int blockCount(ByteTable table) {
    for (unsigned char& block : table.blockOf)
        block = 0;
    return table.assignBlocks();
}

template <int count>
struct BlockStorage {
    ByteTable::Block blocks[count] = {};
    explicit constexpr BlockStorage(ByteTable table) { table.fillBlocks(blocks); }
};

template <int count>
constexpr ByteTable withBlocks(ByteTable table, const BlockStorage<count>& storage) {
    table.blocks = storage.blocks;
    return table;
}

constexpr unsigned short nothing[1] = {0};

constexpr ByteTable asciiUnits = makeAsciiTable();
constexpr ByteTable binaryUnits = makeTable(nothing, 0);
constexpr ByteTable cp1252Units = makeTable(cp1252Controls, 0x80);
constexpr ByteTable macRomanUnits = makeTable(macRomanHigh, 0x80);

constexpr BlockStorage<blockCount(asciiUnits)> asciiBlocks(asciiUnits);
constexpr BlockStorage<blockCount(binaryUnits)> binaryBlocks(binaryUnits);
constexpr BlockStorage<blockCount(cp1252Units)> cp1252Blocks(cp1252Units);
constexpr BlockStorage<blockCount(macRomanUnits)> macRomanBlocks(macRomanUnits);

} // namespace

constinit const ByteTable asciiTable = withBlocks(asciiUnits, asciiBlocks);
constinit const ByteTable binaryTable = withBlocks(binaryUnits, binaryBlocks);
constinit const ByteTable cp1252Table = withBlocks(cp1252Units, cp1252Blocks);
constinit const ByteTable macRomanTable = withBlocks(macRomanUnits, macRomanBlocks);

} // namespace KrCore
