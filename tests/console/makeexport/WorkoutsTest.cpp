#include "makeexport/Workouts.h"

#include "makeexport/Period.h"

#include <gtest/gtest.h>

namespace makeexport {

namespace {

TEST(Workouts, noneIsLongerThanTheLongestAndNoneHasAStepRecord) {
    const Clock clock{Random(1)};
    Workouts workouts(clock, Random(2));
    std::size_t longest = 0;
    Element element;
    for (const auto day : daysOfPeriod()) {
        element.clear();
        workouts.append(element, {day, std::chrono::hours(9), 1});
        longest = std::max(longest, element.text.size());
        EXPECT_TRUE(element.steps.empty());
        EXPECT_EQ(element.text.find("<Record"), std::string::npos);
    }
    EXPECT_GT(longest, 2000U);
    EXPECT_LE(longest, longestWorkout);
}

}  // namespace

}  // namespace makeexport
