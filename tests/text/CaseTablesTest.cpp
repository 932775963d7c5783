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
