#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace ambulet {

/// The figures of a month row: a total, and averages over the days that have records (not over the
/// calendar days of the month). A plain value; nothing in it is rounded.
class MonthSummary {
  public:
    /// The month and year in the user's language, in UTF-8. Empty until it is set.
    const std::optional<std::string>& title() const { return _title; }
    void setTitle(std::optional<std::string> title) { _title = std::move(title); }

    std::int64_t totalSteps() const { return _totalSteps; }
    void setTotalSteps(std::int64_t totalSteps) { _totalSteps = totalSteps; }

    double avgSteps() const { return _avgSteps; }
    void setAvgSteps(double avgSteps) { _avgSteps = avgSteps; }

    /// Miles per day, by the stride at the time when the row was made.
    double avgMiles() const { return _avgMiles; }
    void setAvgMiles(double avgMiles) { _avgMiles = avgMiles; }

    friend bool operator==(const MonthSummary&, const MonthSummary&) = default;

  private:
    std::optional<std::string> _title;
    std::int64_t _totalSteps = 0;
    double _avgSteps = 0;
    double _avgMiles = 0;
};

}  // namespace ambulet
