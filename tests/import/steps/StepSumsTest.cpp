#include "import/steps/StepSums.h"

#include "import/Reading.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <string>

namespace ambulet {

namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

std::string utcText(sys_seconds instant) {
    const year_month_day date = floor<days>(instant);
    const hh_mm_ss time(instant - floor<days>(instant));
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d +0000",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
                  static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return text;
}

Days oneEach(std::initializer_list<const char*> startDates) {
    StepSums sums;
    for (const char* startDate : startDates) {
        sums.add(startDate, "1");
    }
    return asText(sums.days());
}

TEST(StepSums, setReplacesAllSumsAndLaterRecordsAreAddedToTheNewOnes) {
    StepSums sums;
    sums.add(noon9, "1");
    const StepSums::ByDate before = sums.byDate();
    sums.add(noon9, "2");
    sums.add(noon10, "3");
    sums.set(before);
    EXPECT_EQ(asText(sums.days()), (Days{{"2024-03-09", 1}}));
    sums.add(noon9, "4");
    EXPECT_EQ(asText(sums.days()), (Days{{"2024-03-09", 5}}));
}

TEST(StepSums, thereAreNoDaysWithoutRecords) {
    EXPECT_TRUE(StepSums().days().empty());
}

TEST(StepSums, aRecordCountsOnTheDayOfTheUsersTimeZone) {
    for (const auto& [zone, date] :
         {std::pair("UTC", "2024-03-10"), std::pair("Africa/Lagos", "2024-03-10"),  // UTC+1
          std::pair("America/Los_Angeles", "2024-03-09"),                           // UTC-8
          std::pair("Asia/Tokyo", "2024-03-10"), std::pair("Pacific/Pago_Pago", "2024-03-09")}) {
        const ScopedTimeZone local(zone);
        EXPECT_EQ(oneEach({"2024-03-09 23:30:00 -0800"}), (Days{{date, 1}})) << zone;
    }
}

TEST(StepSums, theDateOfADayIsTheInstantAtWhichItBegins) {
    // Midnight of 10 March 2024 in five time zones. The numbers are from the `date` command.
    for (const auto& [zone, start] :
         {std::pair("UTC", 1710028800), std::pair("Europe/Berlin", 1710025200),
          std::pair("America/New_York", 1710046800), std::pair("Asia/Kolkata", 1710009000),
          std::pair("Pacific/Auckland", 1709982000)}) {
        const ScopedTimeZone local(zone);
        StepSums sums;
        sums.add(utcText(sys_seconds(seconds(start)) + 13h), "1");
        ASSERT_EQ(sums.days().size(), 1U);
        EXPECT_EQ(sums.days()[0].date(), sys_seconds(seconds(start))) << zone;
    }
}

TEST(StepSums, daysAreSortedNewestFirst) {
    EXPECT_EQ(oneEach({"2024-03-09 12:00:00 +0000", "2025-01-01 12:00:00 +0000",
                       "2023-12-31 12:00:00 +0000", "2024-03-09 13:00:00 +0000"}),
              (Days{{"2025-01-01", 1}, {"2024-03-09", 2}, {"2023-12-31", 1}}));
}

TEST(StepSums, aDayWithZeroStepsIsListed) {
    StepSums sums;
    sums.add("2024-03-09 12:00:00 +0000", "");
    sums.add("2024-03-10 12:00:00 +0000", "abc");
    EXPECT_EQ(asText(sums.days()), (Days{{"2024-03-10", 0}, {"2024-03-09", 0}}));
}

TEST(StepSums, aRecordWithoutAValidStartIsNotAdded) {
    EXPECT_EQ(oneEach({"", "2024-03-09", "2024-03-09 12:00:00", "2024-03-09T12:00:00+0000",
                       "2024-02-30 12:00:00 +0000"}),
              Days());
}

TEST(StepSums, sumsWrapAroundAtTheEndsOfTheRange) {
    using Limits = std::numeric_limits<std::int64_t>;
    StepSums sums;
    sums.add("2024-03-09 12:00:00 +0000", "9223372036854775807");
    sums.add("2024-03-09 12:00:00 +0000", "1");
    sums.add("2024-03-10 12:00:00 +0000", "-9223372036854775808");
    sums.add("2024-03-10 12:00:00 +0000", "-1");
    EXPECT_EQ(asText(sums.days()),
              (Days{{"2024-03-10", Limits::max()}, {"2024-03-09", Limits::min()}}));
}

TEST(StepSums, theDayOfTheSpringChangeHas23HoursAndThatOfTheAutumnChange25) {
    const ScopedTimeZone berlin("Europe/Berlin");
    StepSums sums;
    for (const auto& [first, hoursAround] :
         {std::pair(2024y / March / 31, 26), std::pair(2024y / October / 27, 28)}) {
        // A record every half hour, from 21:00 UTC of the day before. 31 March begins at 23:00 UTC,
        // 27 October at 22:00 UTC.
        const sys_seconds begin = sys_days(first) - 3h;
        for (int half = 0; half < 2 * (hoursAround + 3); ++half) {
            sums.add(utcText(begin + half * 30min), "1");
        }
    }
    const Days days = asText(sums.days());
    const auto stepsOn = [&days](const char* date) {
        for (const auto& [each, steps] : days) {
            if (each == date) {
                return steps;
            }
        }
        return std::int64_t{-1};
    };
    EXPECT_EQ(stepsOn("2024-03-31"), 2 * 23);
    EXPECT_EQ(stepsOn("2024-10-27"), 2 * 25);
}

TEST(StepSums, aDayWithoutAMidnightIsOmitted) {
    for (const auto& [zone, before, day, after] :
         {std::tuple("America/Sao_Paulo", "2018-11-03", "2018-11-04", "2018-11-05"),
          std::tuple("Asia/Beirut", "2021-03-27", "2021-03-28", "2021-03-29"),
          std::tuple("Africa/Cairo", "2023-04-27", "2023-04-28", "2023-04-29")}) {
        const ScopedTimeZone local(zone);
        StepSums sums;
        for (const char* date : {before, day, after}) {
            sums.add(std::string(date) + " 12:00:00 +0000", "1");
        }
        EXPECT_EQ(asText(sums.days()), (Days{{after, 1}, {before, 1}})) << zone;
    }
}

TEST(StepSums, aDayThatTheTimeZoneSkippedHasNoRecords) {
    const ScopedTimeZone samoa("Pacific/Apia");
    EXPECT_EQ(oneEach({"2011-12-30 09:59:59 +0000", "2011-12-30 10:00:00 +0000"}),
              (Days{{"2011-12-31", 1}, {"2011-12-29", 1}}));
}

TEST(StepSums, theReturnOfSummerTimeToEgyptIn2023IsKnown) {
    // Egypt reintroduced summer time in 2023. A day there begins at 21:00 UTC in summer, and at
    // 22:00 UTC in winter.
    const ScopedTimeZone cairo("Africa/Cairo");
    EXPECT_EQ(oneEach({"2023-07-01 20:59:59 +0000", "2023-07-01 21:00:00 +0000",
                       "2023-12-01 21:59:59 +0000", "2023-12-01 22:00:00 +0000"}),
              (Days{{"2023-12-02", 1}, {"2023-12-01", 1}, {"2023-07-02", 1}, {"2023-07-01", 1}}));
}

TEST(StepSums, theOrderOfRecordsMakesNoDifference) {
    const ScopedTimeZone berlin("Europe/Berlin");
    StepSums inRuns;
    StepSums inTurns;
    const sys_seconds begin = sys_days(2024y / March / 25);
    for (int day = 0; day < 14; ++day) {
        for (int hour = 0; hour < 24; ++hour) {
            inRuns.add(utcText(begin + days(day) + hours(hour)), std::to_string(day * 24 + hour));
        }
    }
    for (int hour = 23; hour >= 0; --hour) {
        for (int day = 0; day < 14; ++day) {
            inTurns.add(utcText(begin + days(day) + hours(hour)), std::to_string(day * 24 + hour));
        }
    }
    EXPECT_EQ(inRuns.days(), inTurns.days());
    EXPECT_EQ(inRuns.days().size(), 15U);
}

TEST(StepSums, recordsOfDistantDaysMayAlternate) {
    const ScopedTimeZone local("America/Los_Angeles");
    StepSums sums;
    for (int hour = 0; hour < 24; ++hour) {
        // These dates are 4096 days apart, so they share an entry of the cache.
        for (const char* date : {"1990-01-01", "2001-03-20"}) {
            char text[64];
            std::snprintf(text, sizeof text, "%s %02d:30:00 -0800", date, hour);
            sums.add(text, "10");
        }
    }
    EXPECT_EQ(asText(sums.days()), (Days{{"2001-03-20", 240}, {"1990-01-01", 240}}));
}

}  // namespace

}  // namespace ambulet
