#pragma once

#include "model/DailySteps.h"
#include "model/MonthSummary.h"

#include <variant>

namespace ambulet {

/// A row of the day table: a month's summary, or a day. Which of the two is the alternative it
/// holds.
using DisplayRow = std::variant<MonthSummary, DailySteps>;

}  // namespace ambulet
