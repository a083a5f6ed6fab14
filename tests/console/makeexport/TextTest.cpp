#include "makeexport/Text.h"

#include <gtest/gtest.h>

namespace makeexport {

namespace {

std::string decimal(std::int64_t scaled, int decimals) {
    std::string text;
    appendDecimal(text, scaled, decimals);
    return text;
}

TEST(Text, aDecimalHasAllItsDecimals) {
    EXPECT_EQ(decimal(1205, 2), "12.05");
    EXPECT_EQ(decimal(7, 3), "0.007");
    EXPECT_EQ(decimal(1000, 3), "1.000");
    EXPECT_EQ(decimal(42, 0), "42");
    EXPECT_EQ(decimal(0, 1), "0.0");
}

TEST(Text, aDayHasTwoDigitsForMonthAndDay) {
    using namespace std::chrono;
    std::string text;
    appendDay(text, local_days(2024y / March / 9));
    EXPECT_EQ(text, "2024-03-09");
}

TEST(Text, anAttributeBeginsWithABlank) {
    std::string text = "<Me";
    appendAttribute(text, "value", "a &amp; b");
    EXPECT_EQ(text, "<Me value=\"a &amp; b\"");
}

}  // namespace

}  // namespace makeexport
