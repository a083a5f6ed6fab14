#include "makeexport/ActivitySummaries.h"

#include "makeexport/Period.h"

#include <gtest/gtest.h>

namespace makeexport {

namespace {

TEST(ActivitySummaries, allAreOfOneLength) {
    Random random(1);
    for (const auto day : daysOfPeriod()) {
        std::string text;
        appendActivitySummary(text, day, random);
        EXPECT_EQ(text.size(), activitySummaryLength()) << text;
    }
}

}  // namespace

}  // namespace makeexport
