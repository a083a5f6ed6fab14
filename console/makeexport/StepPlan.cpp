#include "makeexport/StepPlan.h"

#include "makeexport/Period.h"

#include <algorithm>

namespace makeexport {

using namespace std::chrono;

namespace {

std::int64_t steps(local_days day, Random& random) {
    const weekday ofWeek(day);
    const unsigned month = unsigned(year_month_day(day).month());
    const bool weekend = ofWeek == Saturday || ofWeek == Sunday;
    const bool summer = month >= 5 && month <= 9;
    const int usual = 7400 + (weekend ? 1300 : 0) + (summer ? 1100 : 0);
    // The sum of several is near the middle more often than not.
    int count = usual + random.between(-2000, 2000) + random.between(-2000, 2000) +
                random.between(-2000, 2000);
    if (random.oneIn(40)) {
        count += random.between(4000, 9000);
    }
    return std::clamp(count, 2200, 19500);
}

}  // namespace

StepPlan::StepPlan(Random random) {
    for (const local_days day : daysOfPeriod()) {
        const bool walked = !random.oneIn(50) || day == firstDay || day == lastDay;
        _steps.push_back(walked ? steps(day, random) : 0);
    }
}

std::int64_t StepPlan::stepsOn(local_days day) const {
    return _steps.at(static_cast<std::size_t>((day - firstDay).count()));
}

std::vector<local_days> StepPlan::days() const {
    std::vector<local_days> walked = daysOfPeriod();
    std::erase_if(walked, [this](local_days day) { return stepsOn(day) == 0; });
    return walked;
}

}  // namespace makeexport
