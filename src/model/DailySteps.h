#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace ambulet {

/// One calendar day and the sum of the steps of all records that start on it. A plain value.
class DailySteps {
  public:
    /// The instant at which the day begins in the user's time zone. Empty until it is set; the
    /// importer always sets it.
    std::optional<std::chrono::sys_seconds> date() const { return _date; }
    void setDate(std::optional<std::chrono::sys_seconds> date) { _date = date; }

    /// May be zero or negative.
    std::int64_t steps() const { return _steps; }
    void setSteps(std::int64_t steps) { _steps = steps; }

    friend bool operator==(const DailySteps&, const DailySteps&) = default;

  private:
    std::optional<std::chrono::sys_seconds> _date;
    std::int64_t _steps = 0;
};

}  // namespace ambulet
