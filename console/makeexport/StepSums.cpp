#include "makeexport/StepSums.h"

#include "makeexport/Period.h"
#include "makeexport/Text.h"

#include <array>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <map>

namespace makeexport {

using namespace std::chrono;

namespace {

using QuarterHours = duration<std::int64_t, std::ratio<900>>;

/// The process's time zone, for as long as it lives.
class TimeZone {
  public:
    explicit TimeZone(const std::string& name) {
        if (const char* before = std::getenv("TZ")) {
            _before = before;
        }
        set(name);
    }
    ~TimeZone() { set(_before); }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

  private:
    static void set(const std::optional<std::string>& name) {
        if (name) {
            setenv("TZ", name->c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }

    std::optional<std::string> _before;
};

struct LocalTime {
    local_days day;
    bool isMidnight;
};

LocalTime localTime(sys_seconds instant) {
    const std::time_t time = instant.time_since_epoch().count();
    std::tm tm{};
    localtime_r(&time, &tm);
    const year_month_day day(year(tm.tm_year + 1900), month(static_cast<unsigned>(tm.tm_mon + 1)),
                             std::chrono::day(static_cast<unsigned>(tm.tm_mday)));
    return {local_days(day), tm.tm_hour == 0 && tm.tm_min == 0};
}

}  // namespace

StepSums::StepSums()
    : _quarterHours(
          static_cast<std::size_t>(floor<QuarterHours>(periodEnd - periodBegin).count())) {}

void StepSums::add(const StepSample& sample) {
    const auto index = floor<QuarterHours>(sample.start - periodBegin).count();
    std::optional<std::int64_t>& sum = _quarterHours.at(static_cast<std::size_t>(index));
    sum = sum.value_or(0) + sample.steps;
}

std::vector<DaySum> StepSums::byDay(const std::string& zone) const {
    struct Day {
        std::optional<std::int64_t> steps;
        bool hasMidnight = false;
    };
    std::map<local_days, Day, std::greater<>> days;
    const TimeZone inForce(zone);
    for (std::size_t i = 0; i < _quarterHours.size(); ++i) {
        const LocalTime local = localTime(periodBegin + QuarterHours(i));
        Day& day = days[local.day];
        day.hasMidnight = day.hasMidnight || local.isMidnight;
        if (_quarterHours[i]) {
            day.steps = day.steps.value_or(0) + *_quarterHours[i];
        }
    }

    std::vector<DaySum> sums;
    for (const auto& [day, found] : days) {
        if (found.hasMidnight && found.steps) {
            sums.push_back({day, *found.steps});
        }
    }
    return sums;
}

bool isTimeZone(const std::string& name) {
    const char* folder = std::getenv("TZDIR");
    std::ifstream data(std::string(folder != nullptr ? folder : "/usr/share/zoneinfo") + "/" + name,
                       std::ios::binary);
    std::array<char, 4> magic{};
    return data.read(magic.data(), magic.size()) &&
           std::string_view(magic.data(), magic.size()) == "TZif";
}

std::string sumLines(const std::vector<DaySum>& sums) {
    std::string text;
    for (const DaySum& sum : sums) {
        appendDay(text, sum.day);
        text += '\t';
        appendNumber(text, sum.steps);
        text += '\n';
    }
    return text;
}

}  // namespace makeexport
