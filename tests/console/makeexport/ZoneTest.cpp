// The rules of daylight saving against the time zone data of the system.

#include "makeexport/Zone.h"

#include "makeexport/Period.h"
#include "support/Environment.h"

#include <gtest/gtest.h>

#include <ctime>

namespace makeexport {

using namespace ambulet;

using namespace std::chrono;

namespace {

seconds systemOffset(sys_seconds instant) {
    const std::time_t time = instant.time_since_epoch().count();
    std::tm tm{};
    localtime_r(&time, &tm);
    return seconds(tm.tm_gmtoff);
}

std::vector<OffsetChange> systemOffsets(const Zone& zone) {
    const ScopedTimeZone inForce{std::string(zone.name)};
    std::vector<OffsetChange> changes = {{periodBegin, systemOffset(periodBegin)}};
    for (sys_seconds t = periodBegin; t < periodEnd; t += 15min) {
        if (const seconds offset = systemOffset(t); offset != changes.back().offset) {
            changes.push_back({t, offset});
        }
    }
    return changes;
}

TEST(Zone, theHomeZoneChangesItsClocksWhenTheSystemSays) {
    const std::vector<OffsetChange> changes = homeZone().offsets(periodBegin, periodEnd);
    // November 2015, then two a year from 2016 to 2024, March 2025; and the start.
    EXPECT_EQ(changes.size(), 1U + 1U + 2U * 9U + 1U);
    EXPECT_EQ(changes, systemOffsets(homeZone()));
}

TEST(Zone, foreignZonesChangeTheirClocksWhenTheSystemSays) {
    ASSERT_FALSE(foreignZones().empty());
    for (const Zone& zone : foreignZones()) {
        EXPECT_EQ(zone.offsets(periodBegin, periodEnd), systemOffsets(zone)) << zone.name;
    }
}

TEST(Zone, aChangeCountsFromItsInstantOn) {
    // New York's clocks went from -5 to -4 hours at 2024-03-10 07:00:00 UTC.
    const sys_seconds change = sys_days(2024y / March / 10) + 7h;
    const auto before = homeZone().offsets(change - 1s, change);
    ASSERT_EQ(before.size(), 1U);
    EXPECT_EQ(before[0], (OffsetChange{change - 1s, -5h}));
    const auto after = homeZone().offsets(change, change + 1s);
    ASSERT_EQ(after.size(), 1U);
    EXPECT_EQ(after[0], (OffsetChange{change, -4h}));
}

}  // namespace

}  // namespace makeexport
