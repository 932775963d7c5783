#include "text/LocaleName.h"

#include "text/CaseMapping.h"

namespace KrCore {

namespace {

struct LocaleRule {
    const char* start;
    const char* locale;
};

// What a language alone stands for; any other is its own country ("fr_FR"). Kept: Persian is served
// by the Arabic texts, and under a country that no Arabic locale keeps below. Held by
// LocaleName.ExpandsLanguages.
constexpr LocaleRule languageRules[] = {
    {"da", "da_DK"}, {"en", "en_US"}, {"ja", "ja_JP"},
    {"ko", "ko_KR"}, {"fa", "ar_AR"}, {"zh", "zh_CN"},
};

// Languages whose texts come for one country only. Kept: Norwegian stays "no_NO" and is not taken
// for "nb_NO". Held by LocaleName.UnifiesCountries.
constexpr LocaleRule countryRules[] = {
    {"ar_", "ar_AE"}, {"zh_", "zh_TW"}, {"fr_", "fr_FR"}, {"de_", "de_DE"}, {"es_", "es_ES"},
};

String fromLanguage(const String& language) {
    for (const LocaleRule& rule : languageRules) {
        if (language == rule.start) return rule.locale;
    }
    String country = language;
    country.toUpper();
    return language + "_" + country;
}

String withKnownCountry(const String& locale) {
    if (locale == "zh_CN") return locale;
    for (const LocaleRule& rule : countryRules) {
        if (locale.ncmp(rule.start, 3) == 0) return rule.locale;
    }
    return locale;
}

} // namespace

String normalizedLocale(String name) {
    const int length = name.length();
    for (int i = 0; i < 2 && length >= 2; ++i)
        name.set(i, foldLower(name.wstr()[i]));
    for (int i = 3; i < 5 && length > 4; ++i)
        name.set(i, foldUpper(name.wstr()[i]));
    if (length == 2) return fromLanguage(name);
    if (length == 5) return withKnownCountry(name);
    return name;
}

} // namespace KrCore
