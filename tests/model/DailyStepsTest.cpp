#include "model/DailySteps.h"

#include <gtest/gtest.h>

#include <limits>

namespace ambulet {

namespace {

TEST(DailySteps, aNewDayHasNoDateAndNoSteps) {
    const DailySteps day;
    EXPECT_EQ(day.date(), std::nullopt);
    EXPECT_EQ(day.steps(), 0);
}

TEST(DailySteps, stepsHoldTheFullSignedRange) {
    DailySteps day;
    for (const std::int64_t steps : {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1},
                                     std::numeric_limits<std::int64_t>::max()}) {
        day.setSteps(steps);
        EXPECT_EQ(day.steps(), steps);
    }
}

TEST(DailySteps, theDateIsKeptAsGiven) {
    DailySteps day;
    day.setDate(std::chrono::sys_seconds(std::chrono::seconds(1741000000)));
    EXPECT_EQ(day.date()->time_since_epoch().count(), 1741000000);
}

}  // namespace

}  // namespace ambulet
