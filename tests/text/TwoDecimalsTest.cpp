#include "text/TwoDecimals.h"

#include <gtest/gtest.h>

#include <limits>

namespace ambulet {

namespace {

TEST(TwoDecimals, roundsExactTiesToTheEvenDigit) {
    EXPECT_EQ(twoDecimals(2.125), "2.12");
    EXPECT_EQ(twoDecimals(2.375), "2.38");
    EXPECT_EQ(twoDecimals(2.625), "2.62");
    EXPECT_EQ(twoDecimals(2.875), "2.88");
}

// As a double, 2.675 is slightly smaller, and 2.665 slightly larger.
TEST(TwoDecimals, roundsTheBinaryValue) {
    EXPECT_EQ(twoDecimals(2.675), "2.67");
    EXPECT_EQ(twoDecimals(2.665), "2.67");
    EXPECT_EQ(twoDecimals(2.456), "2.46");
}

TEST(TwoDecimals, alwaysHasTwoDecimalsAndNeverGroups) {
    EXPECT_EQ(twoDecimals(0), "0.00");
    EXPECT_EQ(twoDecimals(3), "3.00");
    EXPECT_EQ(twoDecimals(-0.5), "-0.50");
    EXPECT_EQ(twoDecimals(1e12), "1000000000000.00");
}

TEST(TwoDecimals, theLongestTextFitsAndInfinityIsInf) {
    EXPECT_EQ(twoDecimals(std::numeric_limits<double>::lowest()).size(), 1U + 309U + 3U);
    EXPECT_EQ(twoDecimals(std::numeric_limits<double>::infinity()), "inf");
}

}  // namespace

}  // namespace ambulet
