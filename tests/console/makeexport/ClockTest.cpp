#include "makeexport/Clock.h"

#include "makeexport/Period.h"

#include <gtest/gtest.h>

#include <ctime>
#include <set>

namespace makeexport {

using namespace std::chrono;

namespace {

/// What a text as "2024-03-09 07:15:02 -0800" says.
sys_seconds instantIn(const std::string& text) {
    std::tm tm{};
    const char* rest = strptime(text.c_str(), "%Y-%m-%d %H:%M:%S %z", &tm);
    if (rest == nullptr || *rest != '\0' || text.size() != 25) {
        ADD_FAILURE() << text;
        return {};
    }
    const long offset = tm.tm_gmtoff;
    return sys_seconds(seconds(timegm(&tm) - offset));
}

std::string textOf(const Clock& clock, sys_seconds instant) {
    std::string text;
    DateText(clock).append(text, instant);
    return text;
}

TEST(Clock, itsStretchesCoverThePeriodWithoutGaps) {
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
        const Clock clock{Random(seed)};
        sys_seconds reached = periodBegin;
        for (const Clock::Stretch& stretch : clock.stretches()) {
            EXPECT_EQ(stretch.from, reached);
            EXPECT_LT(stretch.from, stretch.until);
            reached = stretch.until;
        }
        EXPECT_EQ(reached, sys_seconds(periodEnd));
    }
}

TEST(Clock, thePersonIsAtHomeMostlyAndAbroadTwiceAYear) {
    const Clock clock{Random(3)};
    seconds away{};
    int trips = 0;
    const Zone* last = &homeZone();
    for (const Clock::Stretch& stretch : clock.stretches()) {
        if (stretch.zone != &homeZone()) {
            away += stretch.until - stretch.from;
            trips += stretch.zone != last ? 1 : 0;
        }
        last = stretch.zone;
    }
    EXPECT_EQ(trips, 20);
    EXPECT_GE(away, 20 * days(3));
    EXPECT_LE(away, 20 * days(18));
}

TEST(Clock, thePeriodBeginsAndEndsAtHome) {
    const Clock clock{Random(4)};
    const sys_seconds first = sys_days(2015y / October / 1) + 4h;
    const sys_seconds last = sys_days(2025y / September / 30) + 16h;
    EXPECT_EQ(textOf(clock, first), "2015-10-01 00:00:00 -0400");
    EXPECT_EQ(textOf(clock, last + 65s), "2025-09-30 12:01:05 -0400");
}

TEST(Clock, aShownTimeLeadsBackToItsInstant) {
    const Clock clock{Random(5)};
    for (const Clock::Stretch& stretch : clock.stretches()) {
        // Far enough from both changes for a time that is shown once only.
        for (sys_seconds t = stretch.from + 20h; t < stretch.until - 20h; t += 7h + 11s) {
            const local_seconds shown((t + stretch.offset).time_since_epoch());
            EXPECT_EQ(clock.instantOf(shown), t);
        }
    }
}

TEST(DateText, everyTextTellsItsInstantInAnyOrder) {
    const Clock clock{Random(6)};
    DateText dates(clock);
    Random random(7);
    std::set<std::string> offsets;
    for (int i = 0; i < 20000; ++i) {
        const sys_seconds near =
            periodBegin + seconds(random.between(0, 3600)) * random.between(0, 87000);
        for (const sys_seconds instant : {near, near + 900s, near + 5h, near - 1s}) {
            if (instant >= sys_seconds(periodBegin) && instant < sys_seconds(periodEnd)) {
                std::string text;
                dates.append(text, instant);
                ASSERT_EQ(instantIn(text), instant) << text;
                offsets.insert(text.substr(20));
            }
        }
    }
    // Those of home, and of some zones more.
    EXPECT_TRUE(offsets.contains("-0500"));
    EXPECT_TRUE(offsets.contains("-0400"));
    EXPECT_GE(offsets.size(), 5U);
}

TEST(DateText, theDayEndsAtLocalMidnight) {
    const Clock clock{Random(8)};
    const sys_seconds midnight = sys_days(2025y / September / 30) + 4h;
    DateText dates(clock);
    std::string text;
    dates.append(text, midnight - 1s);
    text += '|';
    dates.append(text, midnight);
    EXPECT_EQ(text, "2025-09-29 23:59:59 -0400|2025-09-30 00:00:00 -0400");
}

}  // namespace

}  // namespace makeexport
