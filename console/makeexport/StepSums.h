#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace makeexport {

/// The sums of the steps of an export, by the start of the records: one sum for each quarter hour
/// of UTC. In the years that exports cover, every day of every time zone starts at a quarter hour.
class StepSums {
  public:
    StepSums();

    /// Adds a record. `start`: an instant that is between firstDay and lastDay in local time.
    void add(std::chrono::sys_seconds start, std::int64_t steps);

    /// The days that have records in a time zone, newest first. One line for each day: the date, a
    /// tab, the steps. A day whose midnight the clock skips is left out. Changes the environment
    /// variable TZ; main thread only.
    std::string lines(const std::string& zone) const;

  private:
    std::vector<std::optional<std::int64_t>> _quarterHours;  // starting on the day before firstDay
};

}  // namespace makeexport
