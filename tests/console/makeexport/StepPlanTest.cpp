#include "makeexport/StepPlan.h"

#include "makeexport/Period.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace makeexport {

namespace {

TEST(StepPlan, aDayHasBetween2200And19500StepsOrNone) {
    const StepPlan plan{Random(1)};
    for (const auto day : daysOfPeriod()) {
        const std::int64_t steps = plan.stepsOn(day);
        EXPECT_TRUE(steps == 0 || (steps >= 2200 && steps <= 19500)) << steps;
    }
}

TEST(StepPlan, someDaysHaveNoStepsAndAreNotAmongTheDays) {
    const StepPlan plan{Random(2)};
    const auto withSteps = plan.days();
    const auto all = daysOfPeriod();
    // 1 in 50 of 3653 is 73; five standard deviations are 43.
    EXPECT_GT(all.size() - withSteps.size(), 73U - 43U);
    EXPECT_LT(all.size() - withSteps.size(), 73U + 43U);
    EXPECT_TRUE(std::ranges::all_of(withSteps, [&](auto day) { return plan.stepsOn(day) > 0; }));
}

TEST(StepPlan, theFirstAndTheLastDayHaveSteps) {
    for (std::uint64_t seed = 0; seed < 300; ++seed) {
        const StepPlan plan{Random(seed)};
        EXPECT_GT(plan.stepsOn(firstDay), 0);
        EXPECT_GT(plan.stepsOn(lastDay), 0);
    }
}

}  // namespace

}  // namespace makeexport
