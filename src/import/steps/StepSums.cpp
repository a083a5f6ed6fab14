#include "import/steps/StepSums.h"

#include "model/StepTotals.h"
#include "text/Numbers.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace ambulet {

void StepSums::add(std::string_view startDate, std::string_view value) {
    if (const auto instant = _instants.instant(startDate)) {
        std::int64_t& daySum = sum(*instant);
        daySum = wrappingSum(daySum, integerValue(value));
    }
}

std::int64_t& StepSums::sum(std::chrono::sys_seconds instant) {
    if (_last == nullptr || !_last->day.contains(instant)) {
        // The day in UTC, which may differ from the local day. It only selects the entry.
        const auto number = std::chrono::floor<std::chrono::days>(instant).time_since_epoch();
        _last = &_knownDays[static_cast<std::size_t>(number.count()) % _knownDays.size()];
        if (!_last->day.contains(instant)) {
            *_last = {localDay(instant)};
        }
    }
    if (_last->generation != _generation) {
        _last->sum = &_sums[_last->day.date];
        _last->generation = _generation;
    }
    return *_last->sum;
}

void StepSums::add(ByDate days) {
    _sums.merge(days);
    for (const auto& [date, steps] : days) {  // days that were in the map already
        std::int64_t& daySum = _sums[date];
        daySum = wrappingSum(daySum, steps);
    }
}

void StepSums::set(ByDate days) {
    ++_generation;
    _sums = std::move(days);
}

StepSums::ByDate StepSums::takeAll() {
    ByDate days = std::move(_sums);
    set({});
    return days;
}

std::vector<DailySteps> StepSums::days() const {
    std::vector<DailySteps> days;
    for (const auto& [date, steps] : _sums) {
        if (const auto start = startOfDay(date)) {
            DailySteps& day = days.emplace_back();
            day.setDate(start);
            day.setSteps(steps);
        }
    }
    std::ranges::sort(days, std::greater(), &DailySteps::date);
    return days;
}

}  // namespace ambulet
