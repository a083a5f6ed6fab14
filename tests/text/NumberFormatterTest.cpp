#include "text/NumberFormatter.h"

#include "support/Environment.h"

#include <gtest/gtest.h>
#include <unicode/decimfmt.h>
#include <unicode/numfmt.h>

#include <limits>
#include <memory>

namespace ambulet {

namespace {

std::string whole(double number) {
    return NumberFormatter(0, 0).string(number);
}
std::string whole(std::int64_t number) {
    return NumberFormatter(0, 0).string(number);
}
std::string twoDecimals(double number) {
    return NumberFormatter(2, 2).string(number);
}

std::string byIcu(const char* locale, std::int64_t number) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::NumberFormat> format(
        icu::NumberFormat::createInstance(icu::Locale(locale), UNUM_DECIMAL, status));
    EXPECT_TRUE(U_SUCCESS(status));
    dynamic_cast<icu::DecimalFormat&>(*format).setMinimumGroupingDigits(
        UNUM_MINIMUM_GROUPING_DIGITS_AUTO);
    icu::UnicodeString text;
    std::string utf8;
    return format->format(number, text).toUTF8String(utf8);
}

TEST(NumberFormatter, groupsWholeNumbers) {
    EXPECT_EQ(whole(std::int64_t{0}), "0");
    EXPECT_EQ(whole(std::int64_t{999}), "999");
    EXPECT_EQ(whole(std::int64_t{1000}), "1,000");
    EXPECT_EQ(whole(std::int64_t{-1234567}), "-1,234,567");
    EXPECT_EQ(whole(std::numeric_limits<std::int64_t>::max()), "9,223,372,036,854,775,807");
    EXPECT_EQ(whole(std::numeric_limits<std::int64_t>::min()), "-9,223,372,036,854,775,808");
}

TEST(NumberFormatter, roundsHalfToEven) {
    EXPECT_EQ(whole(7000.5), "7,000");
    EXPECT_EQ(whole(7001.5), "7,002");
    EXPECT_EQ(whole(-0.5), "-0");
    EXPECT_EQ(whole(0.5), "0");
    EXPECT_EQ(whole(1.5), "2");
    EXPECT_EQ(whole(2.5001), "3");
    EXPECT_EQ(twoDecimals(0.125), "0.12");
    EXPECT_EQ(twoDecimals(0.375), "0.38");
}

TEST(NumberFormatter, showsTheRequestedNumberOfDecimals) {
    EXPECT_EQ(twoDecimals(1.4205), "1.42");
    EXPECT_EQ(twoDecimals(3), "3.00");
    EXPECT_EQ(twoDecimals(0), "0.00");
    EXPECT_EQ(twoDecimals(1234.5), "1,234.50");
    EXPECT_EQ(NumberFormatter(0, 2).string(1.5), "1.5");
    EXPECT_EQ(NumberFormatter(2, 2).string(std::int64_t{1234}), "1,234.00");
}

TEST(NumberFormatter, roundsTheShortestDecimalNumber) {
    // The double nearest to 2.675 is a little less than 2.675.
    EXPECT_EQ(twoDecimals(2.675), "2.68");
}

TEST(NumberFormatter, positiveInfinityIsShownWithAPlusSign) {
    EXPECT_EQ(whole(std::numeric_limits<double>::infinity()), "+∞");
    EXPECT_EQ(twoDecimals(std::numeric_limits<double>::infinity()), "+∞");
    EXPECT_EQ(twoDecimals(-std::numeric_limits<double>::infinity()), "-∞");
}

TEST(NumberFormatter, followsTheUsersLocale) {
    for (const char* name : {"de_DE", "fr_FR", "de_CH", "en_IN", "ar_EG", "es_MX"}) {
        const ScopedLocale locale(name);
        EXPECT_EQ(whole(std::int64_t{-1234567}), byIcu(name, -1234567)) << name;
    }
}

TEST(NumberFormatter, theLocaleDecidesHowManyDigitsANumberNeedsToBeGrouped) {
    const ScopedLocale spanish("es_ES.UTF-8");
    EXPECT_EQ(whole(std::int64_t{1234}), byIcu("es_ES", 1234));
    EXPECT_EQ(whole(std::int64_t{12345}), byIcu("es_ES", 12345));
    EXPECT_EQ(whole(std::int64_t{1234}).size(), 4U);
    EXPECT_EQ(whole(std::int64_t{12345}).size(), 6U);
}

TEST(NumberFormatter, theCLocaleGroupsDigits) {
    const ScopedLocale c("C");
    EXPECT_EQ(whole(std::int64_t{1234567}), "1,234,567");
}

TEST(NumberFormatter, canBeMoved) {
    NumberFormatter first(2, 2);
    NumberFormatter second = std::move(first);
    EXPECT_EQ(second.string(1.0), "1.00");
    second = NumberFormatter(0, 0);
    EXPECT_EQ(second.string(1.0), "1");
}

}  // namespace

}  // namespace ambulet
