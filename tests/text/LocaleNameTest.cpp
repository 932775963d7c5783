#include "text/LocaleName.h"

#include "support/TextSupport.h"

using namespace KrCore;

namespace {

struct Row {
    const char* name;
    const char* normalized;
};

template <int count>
void expectNormalized(const Row (&rows)[count]) {
    for (const Row& row : rows)
        EXPECT_EQ(normalizedLocale(row.name), row.normalized) << row.name;
}

} // namespace

TEST(LocaleName, ExpandsLanguages) {
    expectNormalized({{"fr", "fr_FR"},
                      {"DA", "da_DK"},
                      {"en", "en_US"},
                      {"fa", "ar_AR"},
                      {"zh", "zh_CN"},
                      {"ar", "ar_AR"}});
}

TEST(LocaleName, UnifiesCountries) {
    expectNormalized({{"zh_HK", "zh_TW"},
                      {"zh_cn", "zh_CN"},
                      {"FR_ca", "fr_FR"},
                      {"pt_BR", "pt_BR"},
                      {"no_NO", "no_NO"}});
}

TEST(LocaleName, LeavesOtherLengthsAloneButForTheCase) {
    expectNormalized({{"", ""}, {"D", "D"}, {"FIL_ph", "fiL_Ph"}, {"DE_AT_x", "de_AT_x"}});
}
