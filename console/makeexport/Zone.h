#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace makeexport {

/// From `at` on clocks are `offset` ahead of UTC.
struct OffsetChange {
    std::chrono::sys_seconds at;
    std::chrono::seconds offset;

    friend bool operator==(const OffsetChange&, const OffsetChange&) = default;
};

/// Clocks change on the first Sunday on or after a day of the year, at a time of the zone's
/// standard clock.
struct Changeover {
    std::chrono::month_day onOrAfter;
    std::chrono::minutes standardTime;
};

struct DaylightSaving {
    Changeover begin;
    Changeover end;
};

/// A time zone by its rule, as it has been in force without a change since 2008; earlier years are
/// not right. An hour is what daylight saving adds.
struct Zone {
    std::string_view name;
    std::chrono::minutes standardOffset;
    std::optional<DaylightSaving> daylightSaving;

    /// The offset at `from`, dated `from`, then every change before `until`, in order.
    std::vector<OffsetChange> offsets(std::chrono::sys_seconds from,
                                      std::chrono::sys_seconds until) const;
};

/// The zone where the person of the exports lives.
const Zone& homeZone();

/// Where that person travels.
std::span<const Zone> foreignZones();

}  // namespace makeexport
