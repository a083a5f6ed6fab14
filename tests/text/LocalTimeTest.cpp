#include "text/LocalTime.h"

#include "support/Environment.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <tuple>
#include <vector>

namespace ambulet {

namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

// Zones with positive and negative offsets, offsets that are not whole hours, days of 22 to 26
// hours, clock changes by half an hour, at midnight and a minute after midnight, skipped days, and
// rules that changed recently.
const char* const zones[] = {
    "UTC",          "Europe/Berlin",     "America/New_York",     "America/Sao_Paulo",
    "Asia/Beirut",  "Africa/Cairo",      "Pacific/Apia",         "America/St_Johns",
    "Asia/Kolkata", "Asia/Kathmandu",    "America/Havana",       "Australia/Lord_Howe",
    "Asia/Tehran",  "Africa/Casablanca", "Pacific/Kwajalein",    "Pacific/Kiritimati",
    "Asia/Gaza",    "Africa/Freetown",   "America/Scoresbysund", "Antarctica/Troll"};

sys_seconds at(std::int64_t secondsSince1970) {
    return sys_seconds(seconds(secondsSince1970));
}

// Date and time at `instant`, as the system computes them.
std::tm systemsOwn(sys_seconds instant) {
    const std::time_t time = instant.time_since_epoch().count();
    std::tm parts{};
    localtime_r(&time, &parts);
    return parts;
}

year_month_day dateOf(const std::tm& parts) {
    return year(parts.tm_year + 1900) / (parts.tm_mon + 1) / parts.tm_mday;
}

TEST(LocalTime, theDateIsThatOfTheUsersTimeZone) {
    const sys_seconds instant = at(1710055800);  // 2024-03-09 23:30:00 -0800
    for (const auto& [zone, date] :
         {std::pair("America/Los_Angeles", 2024y / March / 9), std::pair("UTC", 2024y / March / 10),
          std::pair("Africa/Lagos", 2024y / March / 10),
          std::pair("Pacific/Pago_Pago", 2024y / March / 9)}) {
        const ScopedTimeZone local(zone);
        EXPECT_EQ(localDate(instant), date) << zone;
    }
}

TEST(LocalTime, theOffsetIsThatOfTheInstantAndNotTodays) {
    const ScopedTimeZone local("Asia/Kathmandu");
    EXPECT_EQ(offsetFromUtc(at(0)), 5h + 30min);  // 5:45 since 1986
    EXPECT_EQ(offsetFromUtc(at(1710055800)), 5h + 45min);
}

TEST(LocalTime, aDayBeginsAtItsMidnight) {
    for (const auto& [zone, date, start] :
         {std::tuple("Europe/Berlin", 2024y / March / 10, 1710025200),
          std::tuple("America/Los_Angeles", 2024y / March / 9, 1709971200),
          std::tuple("Africa/Cairo", 2023y / July / 2, 1688245200),
          std::tuple("Asia/Kolkata", 2024y / January / 1, 1704047400),
          std::tuple("Asia/Kathmandu", 2024y / January / 1, 1704046500)}) {
        const ScopedTimeZone local(zone);
        EXPECT_EQ(startOfDay(date), at(start)) << zone;
    }
}

TEST(LocalTime, aDayWhoseMidnightTheClockSkippedHasNoStart) {
    for (const auto& [zone, date] : {std::pair("America/Sao_Paulo", 2018y / November / 4),
                                     std::pair("Asia/Beirut", 2021y / March / 28),
                                     std::pair("Africa/Cairo", 2023y / April / 28)}) {
        const ScopedTimeZone local(zone);
        EXPECT_EQ(startOfDay(date), std::nullopt) << zone;
        EXPECT_NE(startOfDay(sys_days(date) - days(1)), std::nullopt) << zone;
        EXPECT_NE(startOfDay(sys_days(date) + days(1)), std::nullopt) << zone;
    }
}

TEST(LocalTime, aDayThatTheTimeZoneSkippedHasNoStart) {
    const ScopedTimeZone samoa("Pacific/Apia");
    EXPECT_EQ(startOfDay(2011y / December / 29), at(1325152800));
    EXPECT_EQ(startOfDay(2011y / December / 30), std::nullopt);
    EXPECT_EQ(startOfDay(2011y / December / 31), at(1325239200));
}

TEST(LocalTime, aDayWithTwoMidnightsStartsAtTheFirst) {
    {
        const ScopedTimeZone cuba("America/Havana");  // at 1:00, back to 0:00
        EXPECT_EQ(startOfDay(2024y / November / 3), at(1730606400));
    }
    const ScopedTimeZone newfoundland("America/St_Johns");  // at 0:01, back to 23:01
    EXPECT_EQ(startOfDay(2010y / November / 7), at(1289097000));
}

TEST(LocalTime, anInvalidDateHasNoStart) {
    EXPECT_EQ(startOfDay(2025y / February / 29), std::nullopt);
    EXPECT_EQ(startOfDay(2024y / February / 29), at(1709164800));
    EXPECT_EQ(startOfDay(2024y / month(13) / 1), std::nullopt);
}

TEST(LocalTime, theLocalDayIsTheWholeDayIfTheClockDoesNotChange) {
    const ScopedTimeZone berlin("Europe/Berlin");
    const LocalDay day = localDay(at(1710025200 + 12345));
    EXPECT_EQ(day.date, 2024y / March / 10);
    EXPECT_EQ(day.begin, at(1710025200));
    EXPECT_EQ(day.end, at(1710025200 + 86400));
    EXPECT_TRUE(day.contains(day.begin));
    EXPECT_TRUE(day.contains(day.end - 1s));
    EXPECT_FALSE(day.contains(day.begin - 1s));
    EXPECT_FALSE(day.contains(day.end));
}

TEST(LocalTime, theLocalDayEndsAtAClockChange) {
    const ScopedTimeZone berlin("Europe/Berlin");
    const sys_seconds midnight = sys_days(2024y / March / 30) + 23h;
    const sys_seconds change = sys_days(2024y / March / 31) + 1h;
    const LocalDay before = localDay(midnight + 5min);
    EXPECT_EQ(before.begin, midnight);
    EXPECT_EQ(before.end, change);
    const LocalDay after = localDay(midnight + 12h);
    EXPECT_EQ(after.begin, change);
    EXPECT_EQ(after.end, midnight + 23h);
    EXPECT_EQ(before.date, after.date);
}

TEST(LocalTime, allInstantsOfALocalDayHaveTheDateOfTheDay) {
    // Steps of 41 h 13 min reach each hour of the day in each season.
    for (const char* zone : zones) {
        const ScopedTimeZone local(zone);
        for (sys_seconds instant = sys_days(1930y / 1 / 1); instant < sys_days(2038y / 1 / 1);
             instant += 41h + 13min) {
            const LocalDay day = localDay(instant);
            ASSERT_TRUE(day.contains(instant)) << zone << instant.time_since_epoch().count();
            for (const sys_seconds each :
                 {instant, day.begin, day.end - 1s, day.begin + (day.end - day.begin) / 2}) {
                ASSERT_EQ(day.date, dateOf(systemsOwn(each)))
                    << zone << ' ' << each.time_since_epoch().count();
            }
        }
    }
}

TEST(LocalTime, theStartOfADayIsTheFirstInstantAtWhichTheClockShowsMidnight) {
    // Reads the clock of each zone every 15 minutes for four years. In these years, all offsets are
    // multiples of 15 minutes.
    for (const char* zone : zones) {
        const ScopedTimeZone local(zone);
        std::vector<std::pair<year_month_day, sys_seconds>> midnights;
        for (sys_seconds instant = sys_days(2010y / 1 / 1) - 24h;
             instant < sys_days(2014y / 1 / 1) + 24h; instant += 15min) {
            const std::tm parts = systemsOwn(instant);
            const bool isKnown = !midnights.empty() && midnights.back().first == dateOf(parts);
            if (parts.tm_hour == 0 && parts.tm_min == 0 && !isKnown) {
                midnights.emplace_back(dateOf(parts), instant);
            }
        }
        auto next = midnights.begin();
        for (sys_days day = 2010y / 1 / 1; day < sys_days(2014y / 1 / 1); day += days(1)) {
            next = std::find_if(next, midnights.end(),
                                [day](const auto& each) { return sys_days(each.first) >= day; });
            const bool exists = next != midnights.end() && next->first == year_month_day(day);
            ASSERT_EQ(startOfDay(day), exists ? std::optional(next->second) : std::nullopt)
                << zone << ' ' << day.time_since_epoch().count();
        }
    }
}

TEST(LocalTime, theStartsOfDaysFarFromTodayAreFound) {
    for (const char* zone : {"UTC", "Asia/Tokyo", "America/New_York"}) {
        const ScopedTimeZone local(zone);
        for (const year_month_day date : {year(-32766) / 1 / 1, 1y / 1 / 1, 1583y / 10 / 15,
                                          9999y / 12 / 31, year(32766) / 12 / 31}) {
            const std::optional<sys_seconds> start = startOfDay(date);
            ASSERT_TRUE(start);
            EXPECT_EQ(localDate(*start), date);
            EXPECT_NE(localDate(*start - 1s), date);
        }
    }
}

}  // namespace

}  // namespace ambulet
