#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace ambulet {

/// One calendar day and the sum of the steps of all samples that start on it. A plain value.
class DailySteps {
  public:
    /// The instant at which the day begins in the user's time zone; none in a fresh record, always
    /// there in a record that the importer made.
    std::optional<std::chrono::sys_seconds> date() const { return _date; }
    void setDate(std::optional<std::chrono::sys_seconds> date) { _date = date; }

    /// As the file has it: zero and negative sums are kept.
    std::int64_t steps() const { return _steps; }
    void setSteps(std::int64_t steps) { _steps = steps; }

    friend bool operator==(const DailySteps&, const DailySteps&) = default;

  private:
    std::optional<std::chrono::sys_seconds> _date;
    std::int64_t _steps = 0;
};

}  // namespace ambulet
