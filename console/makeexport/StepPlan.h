#pragma once

#include "makeexport/Random.h"

#include <chrono>
#include <cstdint>
#include <vector>

namespace makeexport {

/// How far the person walks on each day of the ten years: 2,200 to 19,500 steps, more on weekends
/// and in summer; on a day in fifty none at all, but never on the first and the last day.
class StepPlan {
  public:
    explicit StepPlan(Random random);

    /// `day` is one of the period. 0: no step is recorded on it.
    std::int64_t stepsOn(std::chrono::local_days day) const;

    /// Those with steps, in order.
    std::vector<std::chrono::local_days> days() const;

  private:
    std::vector<std::int64_t> _steps;  // a day of the period
};

}  // namespace makeexport
