#include "makeexport/StepSums.h"

#include "Lines.h"
#include "makeexport/Period.h"
#include "makeexport/Random.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <ctime>
#include <map>

namespace makeexport {

using namespace ambulet;

using namespace std::chrono;

namespace {

sys_seconds at(int y, unsigned m, unsigned d, seconds ofDay) {
    return sys_days(year_month_day(year(y), month(m), day(d))) + ofDay;
}

std::string lines(const StepSums& sums, const std::string& zone) {
    return sumLines(sums.byDay(zone));
}

TEST(StepSums, aSampleCountsOnTheLocalDayOfItsStart) {
    StepSums sums;
    sums.add({at(2024, 3, 10, 7h + 30min), 40});
    EXPECT_EQ(lines(sums, "Europe/Berlin"), "2024-03-10\t40\n");
    EXPECT_EQ(lines(sums, "America/Los_Angeles"), "2024-03-09\t40\n");
}

TEST(StepSums, theDaysAreNewestFirstAndSamplesOfADayAreAdded) {
    StepSums sums;
    sums.add({at(2020, 1, 31, 23h), 5});
    sums.add({at(2021, 12, 1, 0s), 7});
    sums.add({at(2020, 1, 31, 1h), 6});
    EXPECT_EQ(lines(sums, "UTC"), "2021-12-01\t7\n2020-01-31\t11\n");
}

TEST(StepSums, noSamplesAreNoDaysAndASampleOfNoStepsIsADay) {
    StepSums sums;
    EXPECT_EQ(lines(sums, "UTC"), "");
    sums.add({at(2020, 1, 31, 1h), 0});
    EXPECT_EQ(lines(sums, "UTC"), "2020-01-31\t0\n");
}

TEST(StepSums, midnightPartsTheDaysOfAZoneWithAQuarterHourInItsOffset) {
    // Kathmandu is 5:45 ahead of UTC: its midnight is 18:15.
    StepSums sums;
    sums.add({at(2022, 6, 1, 18h + 14min + 59s), 1});
    sums.add({at(2022, 6, 1, 18h + 15min), 2});
    EXPECT_EQ(lines(sums, "Asia/Kathmandu"), "2022-06-02\t2\n2022-06-01\t1\n");
}

TEST(StepSums, aDayWithoutMidnightIsLeftOut) {
    // Clocks in Sao Paulo went from 2018-11-03 23:59:59 -0300 to 2018-11-04 01:00:00 -0200.
    StepSums sums;
    sums.add({at(2018, 11, 4, 2h), 1});
    sums.add({at(2018, 11, 4, 12h), 2});
    sums.add({at(2018, 11, 5, 12h), 3});
    EXPECT_EQ(lines(sums, "America/Sao_Paulo"), "2018-11-05\t3\n2018-11-03\t1\n");
}

TEST(StepSums, aMidnightThatCountsTwiceBelongsToOneDay) {
    // Clocks in Havana went back from 2023-11-05 01:00 -0400 to 00:00 -0500, at 05:00 UTC.
    StepSums sums;
    sums.add({at(2023, 11, 5, 4h + 30min), 1});
    sums.add({at(2023, 11, 5, 5h + 30min), 2});
    EXPECT_EQ(lines(sums, "America/Havana"), "2023-11-05\t3\n");
}

TEST(StepSums, theyAreTheSumsOfSingleSamplesInZonesWithOddRules) {
    struct Case {
        const char* zone;
        std::vector<const char*> daysWithoutMidnight;  // that the clocks were put forward over
    };
    const std::vector<Case> cases = {
        {"UTC", {}},
        {"Australia/Lord_Howe", {}},
        {"Asia/Kathmandu", {}},
        {"America/St_Johns", {}},
        {"Africa/Cairo", {"2023-04-28", "2024-04-26", "2025-04-25"}},
        {"Africa/Casablanca", {}},
        {"Asia/Pyongyang", {}},
        {"Antarctica/Casey", {"2016-10-22"}},
        {"Pacific/Kiritimati", {}},
    };
    for (const auto& [zone, daysWithoutMidnight] : cases) {
        StepSums sums;
        std::map<std::string, std::int64_t, std::greater<>> expected;
        const ScopedTimeZone inForce(zone);
        Random random(1);
        for (int i = 0; i < 50000; ++i) {
            const std::int64_t steps = random.between(1, 900);
            const auto start = at(2015, 10, 1, 0s) + seconds(random.between(0, 315'000'000));
            sums.add({start, steps});
            const std::time_t time = start.time_since_epoch().count();
            std::tm tm{};
            localtime_r(&time, &tm);
            char day[16];
            std::strftime(day, sizeof day, "%Y-%m-%d", &tm);
            expected[day] += steps;
        }
        for (const char* day : daysWithoutMidnight) {
            EXPECT_EQ(expected.erase(day), 1U) << zone << ' ' << day;
        }
        std::string text;
        for (const auto& [day, steps] : expected) {
            text += day + '\t' + std::to_string(steps) + '\n';
        }
        EXPECT_EQ(firstDifference(lines(sums, zone), text), "") << zone;
    }
}

TEST(StepSums, theTimeZoneOfTheProcessStaysAsItWas) {
    const ScopedTimeZone inForce("Asia/Tokyo");
    StepSums().byDay("America/New_York");
    EXPECT_STREQ(std::getenv("TZ"), "Asia/Tokyo");
    const std::time_t epoch = 0;
    std::tm tm{};
    localtime_r(&epoch, &tm);
    EXPECT_EQ(tm.tm_hour, 9);
}

TEST(StepSums, onlyZonesThatTheSystemHasDataOfAreZones) {
    EXPECT_TRUE(isTimeZone("UTC"));
    EXPECT_TRUE(isTimeZone("America/Argentina/Buenos_Aires"));
    for (const char* name : {"", "Mars/Olympus", "America", "../../../etc/passwd", "zone.tab"}) {
        EXPECT_FALSE(isTimeZone(name)) << name;
    }
}

}  // namespace

}  // namespace makeexport
