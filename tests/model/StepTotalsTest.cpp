#include "model/StepTotals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <vector>

namespace ambulet {

namespace {

std::vector<DailySteps> days(std::initializer_list<std::int64_t> steps) {
    std::vector<DailySteps> list;
    for (const std::int64_t count : steps) {
        list.emplace_back().setSteps(count);
    }
    return list;
}

TEST(StepTotals, anAverageIsTheTotalDividedByTheNumberOfDays) {
    // 1000 + 2000 + 6000 = 9000; 9000 / 3 = 3000; 2.5 × 9000 / 5280 = 4.26136…; / 3 = 1.42045…
    const StepTotals totals(days({1000, 2000, 6000}), 2.5);
    EXPECT_EQ(totals.days(), 3);
    EXPECT_EQ(totals.steps(), 9000);
    EXPECT_EQ(totals.averageSteps(), 3000);
    EXPECT_NEAR(totals.miles(), 4.261364, 1e-6);
    EXPECT_NEAR(totals.averageMiles(), 1.420455, 1e-6);
}

TEST(StepTotals, theTotalsAndAveragesOfNoDaysAreZero) {
    const StepTotals totals({}, 2.5);
    EXPECT_EQ(totals.days(), 0);
    EXPECT_EQ(totals.steps(), 0);
    EXPECT_EQ(totals.miles(), 0);
    EXPECT_EQ(totals.averageSteps(), 0);
    EXPECT_EQ(totals.averageMiles(), 0);
}

TEST(StepTotals, aStrideOfZeroGivesZeroMiles) {
    EXPECT_EQ(StepTotals(days({5280}), 0).miles(), 0);
    EXPECT_EQ(StepTotals(days({5280}), 1).miles(), 1);
}

TEST(StepTotals, anInfiniteStrideWithoutStepsGivesPositiveNaN) {
    const double miles = StepTotals(days({0}), std::numeric_limits<double>::infinity()).miles();
    EXPECT_TRUE(std::isnan(miles));
    EXPECT_FALSE(std::signbit(miles));
}

TEST(StepTotals, sumsWrapAroundAtTheEndsOfTheRange) {
    constexpr auto max = std::numeric_limits<std::int64_t>::max();
    constexpr auto min = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(StepTotals(days({max, 1}), 1).steps(), min);
    EXPECT_EQ(StepTotals(days({min, -1}), 1).steps(), max);
}

}  // namespace

}  // namespace ambulet
