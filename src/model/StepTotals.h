#pragma once

#include "model/DailySteps.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <span>

namespace ambulet {

/// `a + b`, wrapping around at the ends of the signed 64-bit range.
constexpr std::int64_t wrappingSum(std::int64_t a, std::int64_t b) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
}

/// Totals and averages of some days. An average is the total divided by the number of these days,
/// not by the calendar days that they span. Without days, the averages are 0.
class StepTotals {
  public:
    /// `strideFeet`: feet per step.
    StepTotals(std::span<const DailySteps> days, double strideFeet)
        : _days(static_cast<std::int64_t>(days.size())), _strideFeet(strideFeet) {
        for (const DailySteps& day : days) {
            _steps = wrappingSum(_steps, day.steps());
        }
    }

    std::int64_t days() const { return _days; }
    std::int64_t steps() const { return _steps; }
    /// Positive NaN if the stride is infinite and there are no steps.
    double miles() const {
        const double miles = _strideFeet * static_cast<double>(_steps) / feetPerMile;
        return std::isnan(miles) ? std::numeric_limits<double>::quiet_NaN() : miles;
    }
    double averageSteps() const { return perDay(static_cast<double>(_steps)); }
    double averageMiles() const { return perDay(miles()); }

  private:
    static constexpr double feetPerMile = 5280;

    double perDay(double sum) const { return _days < 1 ? 0 : sum / static_cast<double>(_days); }

    std::int64_t _days = 0;
    std::int64_t _steps = 0;
    double _strideFeet = 0;
};

}  // namespace ambulet
