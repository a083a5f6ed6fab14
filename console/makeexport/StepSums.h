#pragma once

#include "makeexport/Element.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace makeexport {

struct DaySum {
    std::chrono::local_days day;
    std::int64_t steps;

    friend bool operator==(const DaySum&, const DaySum&) = default;
};

/// The steps of an export by their instants, to be told by the days of any time zone. It keeps a
/// sum a quarter hour of UTC and not the samples: in the years of the period every day of every
/// zone begins and ends with one.
class StepSums {
  public:
    StepSums();

    /// `sample` lies in the period.
    void add(const StepSample& sample);

    /// The days on which a sample starts, newest first, by the system's time zone data. A day
    /// whose midnight the zone leaves out is not among them: it has no start to be known by.
    /// `zone` is known (see isTimeZone). Sets TZ for the time of the call: one thread at a time.
    std::vector<DaySum> byDay(const std::string& zone) const;

  private:
    std::vector<std::optional<std::int64_t>> _quarterHours;  // from periodBegin on
};

/// Whether the system has data of a time zone with this name, such as "Asia/Kolkata".
bool isTimeZone(const std::string& name);

/// A line a day: the date, a tab, the steps.
std::string sumLines(const std::vector<DaySum>& sums);

}  // namespace makeexport
