#include "text/Locale.h"

#include "support/Environment.h"

#include <gtest/gtest.h>

namespace ambulet {

namespace {

std::string dateLocaleOf(const char* name) {
    const ScopedLocale locale(name);
    EXPECT_EQ(dateLocale(), numberLocale());
    return dateLocale();
}

TEST(Locale, lcAllOverridesTheCategorysVariableWhichOverridesLang) {
    const ScopedVariable lang("LANG", "pl_PL.UTF-8");
    const ScopedVariable all("LC_ALL", std::nullopt);
    const ScopedVariable time("LC_TIME", std::nullopt);
    const ScopedVariable numeric("LC_NUMERIC", std::nullopt);
    EXPECT_EQ(dateLocale(), "pl_PL");
    EXPECT_EQ(numberLocale(), "pl_PL");

    const ScopedVariable ownTime("LC_TIME", "de_DE.UTF-8");
    const ScopedVariable ownNumeric("LC_NUMERIC", "fr_FR.UTF-8");
    EXPECT_EQ(dateLocale(), "de_DE");
    EXPECT_EQ(numberLocale(), "fr_FR");

    const ScopedVariable ownAll("LC_ALL", "es_ES.UTF-8");
    EXPECT_EQ(dateLocale(), "es_ES");
    EXPECT_EQ(numberLocale(), "es_ES");
}

TEST(Locale, anEmptyVariableCountsAsNotSet) {
    const ScopedVariable lang("LANG", "pl_PL");
    const ScopedVariable time("LC_TIME", "");
    const ScopedVariable numeric("LC_NUMERIC", "");
    EXPECT_EQ(dateLocaleOf(""), "pl_PL");
}

TEST(Locale, theCodesetIsLeftOut) {
    EXPECT_EQ(dateLocaleOf("de_DE.UTF-8"), "de_DE");
    EXPECT_EQ(dateLocaleOf("de_DE.ISO-8859-15@euro").substr(0, 5), "de_DE");
    EXPECT_EQ(dateLocaleOf("eo"), "eo");
}

TEST(Locale, namesWithoutAKnownLanguageAreUsEnglish) {
    for (const char* name :
         {"C", "POSIX", "C.UTF-8", "C.utf8", "POSIX.UTF-8", "/a/path", "xx_YY", "!"}) {
        EXPECT_EQ(dateLocaleOf(name), "en_US") << name;
    }
    const ScopedVariable lang("LANG", std::nullopt);
    const ScopedVariable time("LC_TIME", std::nullopt);
    const ScopedVariable numeric("LC_NUMERIC", std::nullopt);
    const ScopedVariable all("LC_ALL", std::nullopt);
    EXPECT_EQ(dateLocale(), "en_US");
    EXPECT_EQ(numberLocale(), "en_US");
}

TEST(Locale, aScriptOrVariantAtTheEndOfTheNameIsKept) {
    EXPECT_EQ(dateLocaleOf("sr_RS@latin"), "sr_Latn_RS");
    EXPECT_EQ(dateLocaleOf("sr_RS.UTF-8@latin"), "sr_Latn_RS");
    EXPECT_EQ(dateLocaleOf("uz_UZ.UTF-8@cyrillic"), "uz_Cyrl_UZ");
    EXPECT_EQ(dateLocaleOf("sd_IN@devanagari"), "sd_Deva_IN");
    EXPECT_EQ(dateLocaleOf("ca_ES.UTF-8@valencia"), "ca_ES_VALENCIA");
}

}  // namespace

}  // namespace ambulet
