// The shape of the generated tables and a fingerprint of their contents.

#include "text/CaseTables.h"

#include <gtest/gtest.h>

using namespace KrCore;

TEST(CaseTables, CoverTenRangesWithSixArrays) {
    const struct {
        int first, last;
        bool hasArray;
    } rows[] = {{0x0000, 0x07B1, true},  {0x0901, 0x1974, true},  {0x1D00, 0x2183, true},
                {0x24B6, 0x24E9, true},  {0x3000, 0x31FF, true},  {0x3400, 0x4DB5, false},
                {0x4E00, 0x9FA5, false}, {0xA000, 0xA48C, false}, {0xAC00, 0xD7A3, false},
                {0xF900, 0xFFFF, true}};
    ASSERT_EQ(propertyRangeCount, 10);
    int bytes = 0;
    for (int i = 0; i < 10; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(propertyRanges[i].first, rows[i].first);
        EXPECT_EQ(propertyRanges[i].last, rows[i].last);
        EXPECT_EQ(propertyRanges[i].properties != nullptr, rows[i].hasArray);
        if (rows[i].hasArray) bytes += rows[i].last - rows[i].first + 1;
    }
    EXPECT_EQ(bytes, 9694);
}

TEST(CaseTables, HoldTheTellingPropertyBytes) {
    const struct {
        int unit, properties;
    } rows[] = {{0x08, 0x00},  {0x09, 0x10},  {0x0D, 0x10},  {0x0E, 0x00}, {' ', 0x10},
                {'$', 0xC0},   {'0', 0x80},   {'9', 0x80},   {'A', 0xC5},  {'Z', 0xC5},
                {'_', 0xC0},   {'a', 0xCC},   {'z', 0xCC},   {0xA0, 0x10}, {0xAA, 0xC0},
                {0xAD, 0x20},  {0xB5, 0xCF},  {0xD7, 0x00},  {0xFF, 0xCF}, {0x100, 0xC1},
                {0x101, 0xC8}, {0x130, 0xCF}, {0x131, 0xCF}, {0x300, 0x80}};
    for (const auto& row : rows)
        EXPECT_EQ(propertyRanges[0].properties[row.unit], row.properties) << std::hex << row.unit;
}

// Counted from the character database by other means: units that map, and the sum of their
// partners.
TEST(CaseTables, MapAsManyUnitsAsTheDatabase) {
    const struct {
        const CaseMap& map;
        int count;
        unsigned int sum;
    } rows[] = {{lowerCaseMap, 714, 4117388}, {upperCaseMap, 723, 4122317}};
    for (const auto& row : rows) {
        int count = 0;
        unsigned int sum = 0;
        for (unsigned int unit = 0; unit < caseMapSize; ++unit) {
            if (row.map.mapped[unit] == unit) continue;
            ++count;
            sum += row.map.mapped[unit];
        }
        EXPECT_EQ(count, row.count);
        EXPECT_EQ(sum, row.sum);
    }
}
