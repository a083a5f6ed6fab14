#include "model/MonthSummary.h"

#include <gtest/gtest.h>

#include <limits>

namespace ambulet {

namespace {

TEST(MonthSummary, aNewSummaryHasNoTitleAndZeroNumbers) {
    const MonthSummary month;
    EXPECT_EQ(month.title(), std::nullopt);
    EXPECT_EQ(month.totalSteps(), 0);
    EXPECT_EQ(month.avgSteps(), 0.0);
    EXPECT_EQ(month.avgMiles(), 0.0);
}

TEST(MonthSummary, theTitleIsACopyOfTheText) {
    std::string text = "March 2025";
    MonthSummary month;
    month.setTitle(text);
    text[0] = 'm';
    EXPECT_EQ(month.title(), "March 2025");
}

TEST(MonthSummary, totalStepsHoldTheFullSignedRange) {
    MonthSummary month;
    for (const std::int64_t steps : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1},
                                     std::numeric_limits<std::int64_t>::max()}) {
        month.setTotalSteps(steps);
        EXPECT_EQ(month.totalSteps(), steps);
    }
}

TEST(MonthSummary, averagesAreKeptUnrounded) {
    MonthSummary month;
    month.setAvgSteps(1.0 / 3.0);
    month.setAvgMiles(2.0 / 3.0);
    EXPECT_EQ(month.avgSteps(), 1.0 / 3.0);
    EXPECT_EQ(month.avgMiles(), 2.0 / 3.0);
}

}  // namespace

}  // namespace ambulet
