#include "makeexport/StepSums.h"

#include "makeexport/Export.h"

#include <cstdlib>
#include <ctime>

namespace makeexport {

using namespace std::chrono;

namespace {

using QuarterHours = duration<std::int64_t, std::ratio<900>>;

// The range of the sums, in UTC: from a day before firstDay begins to a day after lastDay ends,
// because local time differs from UTC.
constexpr sys_seconds begin(firstDay.time_since_epoch() - days(1));
constexpr sys_seconds end(lastDay.time_since_epoch() + days(2));

}  // namespace

StepSums::StepSums()
    : _quarterHours(static_cast<std::size_t>(duration_cast<QuarterHours>(end - begin).count())) {}

void StepSums::add(sys_seconds start, std::int64_t steps) {
    const auto index = static_cast<std::size_t>(floor<QuarterHours>(start - begin).count());
    std::optional<std::int64_t>& sum = _quarterHours.at(index);
    sum = sum.value_or(0) + steps;
}

std::string StepSums::lines(const std::string& zone) const {
    ::setenv("TZ", zone.c_str(), 1);
    ::tzset();
    std::string lines;
    std::string date;  // the day that is being summed
    bool hasMidnight = false;
    bool hasRecords = false;
    std::int64_t steps = 0;
    // From the newest quarter hour to the oldest. The line of a day is added when the loop reaches
    // an earlier day. It always does, because the oldest quarter hours have no records.
    for (std::size_t i = _quarterHours.size(); i > 0; --i) {
        const std::time_t time = (begin + QuarterHours(i - 1)).time_since_epoch().count();
        std::tm tm{};
        ::localtime_r(&time, &tm);
        char here[16];
        std::strftime(here, sizeof here, "%Y-%m-%d", &tm);
        if (date != here) {
            if (hasMidnight && hasRecords) {
                lines += date + '\t' + std::to_string(steps) + '\n';
            }
            date = here;
            hasMidnight = hasRecords = false;
            steps = 0;
        }
        hasMidnight = hasMidnight || (tm.tm_hour == 0 && tm.tm_min == 0);
        hasRecords = hasRecords || _quarterHours[i - 1];
        steps += _quarterHours[i - 1].value_or(0);
    }
    return lines;
}

}  // namespace makeexport
