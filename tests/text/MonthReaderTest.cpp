#include "text/MonthReader.h"

#include "support/Environment.h"

#include <gtest/gtest.h>

namespace ambulet {

namespace {

using namespace std::chrono_literals;

bool sameMonth(std::chrono::sys_seconds one, std::chrono::sys_seconds other) {
    MonthReader reader;
    return reader.month(one) == reader.month(other);
}

TEST(MonthReader, monthsAreEqualIfTheirNumbersAndYearsAreEqual) {
    const ScopedVariable locale("LC_ALL", "en_US.UTF-8");
    EXPECT_TRUE(
        sameMonth(std::chrono::sys_days(2025y / 1 / 1), std::chrono::sys_days(2025y / 1 / 31)));
    EXPECT_FALSE(
        sameMonth(std::chrono::sys_days(2025y / 1 / 31), std::chrono::sys_days(2025y / 2 / 1)));
    EXPECT_FALSE(
        sameMonth(std::chrono::sys_days(2025y / 1 / 1), std::chrono::sys_days(2024y / 1 / 1)));
}

TEST(MonthReader, theMonthIsThatOfTheLocalTime) {
    const ScopedVariable locale("LC_ALL", "en_US.UTF-8");
    const std::chrono::sys_seconds evening = std::chrono::sys_days(2025y / 1 / 31) + 20h;
    const std::chrono::sys_seconds later = evening + 8h;  // 4:00 on February 1 in UTC
    {
        // In Los Angeles, `later` is 20:00 on January 31.
        const ScopedTimeZone zone("America/Los_Angeles");
        EXPECT_TRUE(sameMonth(evening, later));
    }
    const ScopedTimeZone zone("UTC");
    EXPECT_FALSE(sameMonth(evening, later));
}

// 2025-03-20 was the last day of the Persian year 1403.
TEST(MonthReader, theCalendarIsThatOfTheLocale) {
    const ScopedVariable locale("LC_ALL", "fa_IR.UTF-8");
    const auto day = [](std::chrono::year_month_day date) { return std::chrono::sys_days(date); };
    EXPECT_TRUE(sameMonth(day(2025y / 3 / 19), day(2025y / 3 / 20)));
    EXPECT_FALSE(sameMonth(day(2025y / 3 / 20), day(2025y / 3 / 21)));
    EXPECT_TRUE(sameMonth(day(2025y / 3 / 31), day(2025y / 4 / 1)));
}

TEST(MonthReader, theBuddhistCalendarHasTheGregorianMonths) {
    const ScopedVariable locale("LC_ALL", "th_TH.UTF-8");
    EXPECT_TRUE(
        sameMonth(std::chrono::sys_days(2025y / 3 / 1), std::chrono::sys_days(2025y / 3 / 31)));
    EXPECT_FALSE(
        sameMonth(std::chrono::sys_days(2025y / 3 / 1), std::chrono::sys_days(2024y / 3 / 1)));
}

}  // namespace

}  // namespace ambulet
