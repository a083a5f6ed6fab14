#include "makeexport/Zone.h"

#include <algorithm>
#include <array>

namespace makeexport {

using namespace std::chrono;

namespace {

constexpr DaylightSaving american = {{March / 8, 2h}, {November / 1, 1h}};
constexpr DaylightSaving british = {{March / 25, 1h}, {October / 25, 1h}};
constexpr DaylightSaving centralEuropean = {{March / 25, 2h}, {October / 25, 2h}};
constexpr DaylightSaving australian = {{October / 1, 2h}, {April / 1, 2h}};

constexpr Zone home = {"America/New_York", -5h, american};
constexpr std::array<Zone, 8> foreign = {{
    {"America/Los_Angeles", -8h, american},
    {"Pacific/Honolulu", -10h, {}},
    {"Europe/London", 0h, british},
    {"Europe/Paris", 1h, centralEuropean},
    {"Asia/Tokyo", 9h, {}},
    {"Asia/Kolkata", 5h + 30min, {}},
    {"Asia/Kathmandu", 5h + 45min, {}},
    {"Australia/Sydney", 10h, australian},
}};

sys_seconds instantOf(const Changeover& changeover, year inYear, minutes standardOffset) {
    const sys_days day = inYear / changeover.onOrAfter;
    return day + (Sunday - weekday(day)) + changeover.standardTime - standardOffset;
}

year yearOf(sys_seconds instant) {
    return year_month_day(floor<days>(instant)).year();
}

}  // namespace

std::vector<OffsetChange> Zone::offsets(sys_seconds from, sys_seconds until) const {
    std::vector<OffsetChange> changes;
    if (daylightSaving) {
        // The year before has the change that is in force at the start of the first year; the one
        // after lies ahead of local New Year in zones that are ahead of UTC.
        for (year y = yearOf(from) - years(1); y <= yearOf(until) + years(1); ++y) {
            changes.push_back(
                {instantOf(daylightSaving->begin, y, standardOffset), standardOffset + 1h});
            changes.push_back({instantOf(daylightSaving->end, y, standardOffset), standardOffset});
        }
        std::ranges::sort(changes, {}, &OffsetChange::at);
    }
    OffsetChange first = {from, standardOffset};
    const auto later = std::ranges::upper_bound(changes, from, {}, &OffsetChange::at);
    if (later != changes.begin()) {
        first.offset = std::prev(later)->offset;
    }
    changes.erase(changes.begin(), later);
    changes.erase(std::ranges::lower_bound(changes, until, {}, &OffsetChange::at), changes.end());
    changes.insert(changes.begin(), first);
    return changes;
}

const Zone& homeZone() {
    return home;
}

std::span<const Zone> foreignZones() {
    return foreign;
}

}  // namespace makeexport
