#pragma once

#include <chrono>
#include <optional>

namespace ambulet {

/// The Gregorian calendar in local time, by the system's time zone data. The time zone is read at
/// the first use and at each `readTimeZone`. Any thread.
///
/// Instants must be in the years -32766 to 32766.

/// Reads the system's time zone setting again.
void readTimeZone();

/// Local time minus UTC at `instant`.
std::chrono::seconds offsetFromUtc(std::chrono::sys_seconds instant);

/// The local calendar date at `instant`.
std::chrono::year_month_day localDate(std::chrono::sys_seconds instant);

/// A period within a local day: `date` is the local date of every instant from `begin` until just
/// before `end`.
struct LocalDay {
    std::chrono::year_month_day date;
    std::chrono::sys_seconds begin;
    std::chrono::sys_seconds end;

    bool contains(std::chrono::sys_seconds instant) const {
        return begin <= instant && instant < end;
    }
};

/// The period that contains `instant`: the whole local day, or, if the clock changes on that day,
/// the part before or after the change.
LocalDay localDay(std::chrono::sys_seconds instant);

/// The instant at which the clock shows 00:00 on `date`; the earlier one if it shows 00:00 twice.
/// Empty if the clock skips 00:00, or if `date` is invalid.
std::optional<std::chrono::sys_seconds> startOfDay(std::chrono::year_month_day date);

}  // namespace ambulet
