#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace makeexport {

/// The steps of an export by the instants at which their records start.
///
/// Keeps a sum for each quarter hour of UTC: in the years of the exports every day of every time
/// zone begins with one.
class StepSums {
  public:
    StepSums();

    /// `start` is a local time from firstDay to lastDay, whatever the offset.
    void add(std::chrono::sys_seconds start, std::int64_t steps);

    /// The days of a time zone that have records, newest first, a line each: the date, a tab, the
    /// steps. A day whose midnight the zone's clocks skip is left out. Changes the TZ variable of
    /// the process; main thread only.
    std::string lines(const std::string& zone) const;

  private:
    std::vector<std::optional<std::int64_t>> _quarterHours;  // from the day before firstDay on
};

}  // namespace makeexport
