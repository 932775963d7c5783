// A fingerprint of the generated tables.

#include "text/CaseTables.h"

#include <gtest/gtest.h>

using namespace KrCore;

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
