#pragma once

#include "model/DailySteps.h"
#include "model/MonthSummary.h"

#include <variant>

namespace ambulet {

/// A row of the day table: the summary of a month, or a day.
using DisplayRow = std::variant<MonthSummary, DailySteps>;

}  // namespace ambulet
