#include "text/Numbers.h"

#include "support/Environment.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <limits>

namespace ambulet {

namespace {

using Integers = std::numeric_limits<std::int64_t>;
using Doubles = std::numeric_limits<double>;

TEST(Numbers, readingAnIntegerEndsAtTheFirstNonDigit) {
    EXPECT_EQ(integerValue("12"), 12);
    EXPECT_EQ(integerValue("12.9"), 12);
    EXPECT_EQ(integerValue("1.9"), 1);
    EXPECT_EQ(integerValue("12abc"), 12);
    EXPECT_EQ(integerValue("1e3"), 1);
    EXPECT_EQ(integerValue("1,234"), 1);
    EXPECT_EQ(integerValue("12 34"), 12);
    EXPECT_EQ(integerValue("0x10"), 0);
    EXPECT_EQ(integerValue("007"), 7);
}

TEST(Numbers, anIntegerMayHaveOneSign) {
    EXPECT_EQ(integerValue("-5"), -5);
    EXPECT_EQ(integerValue("+5"), 5);
    EXPECT_EQ(integerValue("--5"), 0);
    EXPECT_EQ(integerValue("-+5"), 0);
    EXPECT_EQ(integerValue("−5"), 0);  // U+2212
}

TEST(Numbers, whiteSpaceMayStandBeforeAnIntegerAndBeforeItsDigits) {
    EXPECT_EQ(integerValue(" 7 "), 7);
    EXPECT_EQ(integerValue(" \t\n\v\f\r7"), 7);
    EXPECT_EQ(integerValue(" - 7"), -7);
    EXPECT_EQ(integerValue("- \t7"), -7);
    EXPECT_EQ(integerValue("\u00A0\u2007\u202F\u30007"), 7);
    EXPECT_EQ(integerValue("\u200B7"), 0);  // a zero-width space is not white space
}

TEST(Numbers, aTextThatStartsWithoutDigitsIsTheInteger0) {
    for (const char* text : {"", " ", "abc", "-", "+ ", ".5", "- x", "٣", "\xC2", "\xFF 5"}) {
        EXPECT_EQ(integerValue(text), 0) << text;
    }
}

TEST(Numbers, anIntegerOutOfRangeIsTheNearestEndOfTheRange) {
    EXPECT_EQ(integerValue("9223372036854775807"), Integers::max());
    EXPECT_EQ(integerValue("9223372036854775808"), Integers::max());
    EXPECT_EQ(integerValue("18446744073709551616"), Integers::max());
    EXPECT_EQ(integerValue("99999999999999999999999999"), Integers::max());
    EXPECT_EQ(integerValue("-9223372036854775807"), -Integers::max());
    EXPECT_EQ(integerValue("-9223372036854775808"), Integers::min());
    EXPECT_EQ(integerValue("-9223372036854775809"), Integers::min());
    EXPECT_EQ(integerValue("-99999999999999999999999999"), Integers::min());
    EXPECT_EQ(integerValue(std::string(100, '0') + "42"), 42);
}

TEST(Numbers, aDoubleIsTheLongestDecimalNumberAtTheStart) {
    EXPECT_EQ(doubleValue("2.5"), 2.5);
    EXPECT_EQ(doubleValue("2.5 feet"), 2.5);
    EXPECT_EQ(doubleValue("2.5.5"), 2.5);
    EXPECT_EQ(doubleValue("2,5"), 2);
    EXPECT_EQ(doubleValue("2."), 2);
    EXPECT_EQ(doubleValue(".5"), 0.5);
    EXPECT_EQ(doubleValue("-.5"), -0.5);
    EXPECT_EQ(doubleValue("+3"), 3);
    EXPECT_EQ(doubleValue("1e3"), 1000);
    EXPECT_EQ(doubleValue("1E-3x"), 0.001);
    EXPECT_EQ(doubleValue("1.5e+2"), 150);
    EXPECT_EQ(doubleValue("1e"), 1);
    EXPECT_EQ(doubleValue("1e+"), 1);
    EXPECT_EQ(doubleValue("1e+-3"), 1);
}

TEST(Numbers, whiteSpaceMayStandBeforeADouble) {
    EXPECT_EQ(doubleValue(" \t\n2.5"), 2.5);
    EXPECT_EQ(doubleValue("\u00A02.5"), 2.5);
    EXPECT_EQ(doubleValue("- 2.5"), 0);
}

TEST(Numbers, aTextThatStartsWithoutADecimalNumberIsTheDouble0) {
    for (const char* text : {"", " ", "abc", ".", "-", "+.", "e5", ".e5", "inf", "-inf", "infinity",
                             "INF", "nan", "NaN", "nan(1)", "∞"}) {
        EXPECT_EQ(doubleValue(text), 0) << text;
    }
    EXPECT_EQ(doubleValue("0x10"), 0);
    EXPECT_EQ(doubleValue("1x10"), 1);
}

TEST(Numbers, aDoubleOutOfRangeIsInfinityOr0) {
    EXPECT_EQ(doubleValue("1e308"), 1e308);
    EXPECT_EQ(doubleValue("1e309"), Doubles::infinity());
    EXPECT_EQ(doubleValue("-1e309"), -Doubles::infinity());
    EXPECT_EQ(doubleValue("1e99999999999999999999"), Doubles::infinity());
    EXPECT_EQ(doubleValue("1e-400"), 0);
    EXPECT_EQ(doubleValue("0e99999"), 0);
    EXPECT_EQ(doubleValue("5e-324"), Doubles::denorm_min());
    EXPECT_EQ(doubleValue("1" + std::string(400, '0')), Doubles::infinity());
    EXPECT_EQ(doubleValue("0." + std::string(400, '0') + "1e401"), 1);
}

TEST(Numbers, numbersAreReadTheSameInALocaleWithADecimalComma) {
    const TemporaryFolder folder;
    const std::string source = folder.write("source", "LC_NUMERIC\ndecimal_point \",\"\n"
                                                      "thousands_sep \".\"\ngrouping 3;3\n"
                                                      "END LC_NUMERIC\n");
    const std::string locale = folder.path() / "comma";
    // localedef fails because the other categories are missing, but writes the locale.
    static_cast<void>(
        std::system(("localedef --force --quiet -i " + source + " " + locale).c_str()));
    const ScopedVariable path("LOCPATH", folder.path());
    ASSERT_NE(std::setlocale(LC_NUMERIC, "comma"), nullptr);
    EXPECT_EQ(std::strtod("1,5", nullptr), 1.5);
    EXPECT_EQ(doubleValue("1.5"), 1.5);
    EXPECT_EQ(doubleValue("1,5"), 1);
    EXPECT_EQ(integerValue("1.500"), 1);
    std::setlocale(LC_NUMERIC, "C");
}

}  // namespace

}  // namespace ambulet
