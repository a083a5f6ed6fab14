#include "text/DayOffsets.h"

#include "support/Environment.h"
#include "text/DateFormatter.h"
#include "text/LocalTime.h"
#include "text/MonthReader.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace ambulet {

namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

constexpr sys_seconds march(sys_days(2025y / March / 1) - 1h);  // midnight in Berlin, in winter
constexpr sys_seconds july(sys_days(2025y / July / 1) - 2h);    // the same, in summer

TEST(DayOffsets, stayThoseOfTheTimeZoneInWhichTheyWereMade) {
    std::vector<sys_seconds> instants = {march, july};
    for (int order = 0; order < 2; ++order, std::ranges::reverse(instants)) {
        const ScopedTimeZone berlin("Europe/Berlin");
        const DayOffsets offsets(instants);
        const ScopedTimeZone newYork("America/New_York");
        EXPECT_EQ(offsets.at(march), 1h);
        EXPECT_EQ(offsets.at(july), 2h);
    }
}

TEST(DayOffsets, atOtherInstantsAreThoseOfTheCurrentTimeZone) {
    const ScopedTimeZone berlin("Europe/Berlin");
    const std::vector<sys_seconds> instants = {march};
    const DayOffsets offsets(instants);
    const ScopedTimeZone newYork("America/New_York");
    EXPECT_EQ(offsets.at(march + 1s), -5h);
    EXPECT_EQ(offsets.at(march - 1s), -5h);
    EXPECT_EQ(DayOffsets().at(july), -4h);
}

TEST(DayOffsets, decideTheDateAndMonthThatAreShown) {
    const ScopedTimeZone berlin("Europe/Berlin");
    const std::vector<sys_seconds> instants = {march};
    const DayOffsets offsets(instants);
    const ScopedTimeZone newYork("America/New_York");
    DateFormatter formatter = DateFormatter::mediumDate();
    EXPECT_EQ(formatter.string(march), "Feb 28, 2025");
    formatter.setOffsets(offsets);
    EXPECT_EQ(formatter.string(march), "Mar 1, 2025");
    EXPECT_EQ(MonthReader().month(march).month, 1);
    EXPECT_EQ(MonthReader(offsets).month(march).month, 2);
}

}  // namespace

}  // namespace ambulet
