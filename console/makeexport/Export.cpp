// An export is written in one pass, section by section: the records of each type, then the
// correlations, workouts and summaries. Each section gets a share of the bytes. Except for the
// summaries, the position of an element in its section determines its time: the first byte is on
// the first day of the section, the last byte on the last day. So an export of any size covers all
// years; in a small one, many days have no records. Memory does not grow with the size, because the
// text is written in blocks.
//
// Times are local. The offset from UTC is looked up when a date is written, or when steps are added
// to the sums.

#include "makeexport/Export.h"

#include "makeexport/Random.h"
#include "makeexport/StepSums.h"
#include "makeexport/Tables.h"

#include <algorithm>
#include <concepts>
#include <string>

namespace makeexport {

using namespace std::chrono;

namespace {

constexpr std::size_t blockSize = std::size_t{256} << 10;

// Smaller exports have no declarations of elements, so that more of their bytes are records.
constexpr std::uint64_t declarationsFrom = std::uint64_t{64} << 10;

void appendPart(std::string& text, string_view part) {
    text += part;
}

void appendPart(std::string& text, double number) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%g", number);
    text += digits;
}

void appendPart(std::string& text, std::integral auto number) {
    text += std::to_string(number);
}

/// Appends the parts. At most one argument may call Random, because the order of evaluation is
/// unspecified.
void append(std::string& text, const auto&... parts) {
    (appendPart(text, parts), ...);
}

/// "2024-03-09".
std::string dayText(local_days day) {
    const year_month_day date(day);
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", int(date.year()), unsigned(date.month()),
                  unsigned(date.day()));
    return text;
}

/// "2024-03-09 07:15:02 -0500".
std::string dateText(local_seconds time) {
    const auto day = floor<days>(time);
    const int ofDay = static_cast<int>((time - day).count());
    const int offset = static_cast<int>(offsetOn(day).count());
    char text[32];
    std::snprintf(text, sizeof text, " %02d:%02d:%02d %+05d", ofDay / 3600, ofDay / 60 % 60,
                  ofDay % 60, offset / 60 * 100 + offset % 60);
    return dayText(day) + text;
}

/// The attributes sourceName, sourceVersion and device. The address of the device is new in each
/// call.
std::string sourceText(const Source& source, local_days day, Random& random) {
    // In each year a system has five minor versions, each followed by two patches.
    const auto since = static_cast<unsigned>((day - firstDay).count());
    std::string version;
    append(version, source.major + static_cast<int>(since / 365), ".", since % 365 / 73);
    if (const unsigned correction = since % 73 / 25; correction > 0) {
        append(version, ".", correction);
    }
    std::string text;
    append(text, " sourceName=\"", source.name, "\" sourceVersion=\"", version, "\"");
    if (source.device.empty()) {
        return text;
    }
    // Later systems write higher memory addresses, and the creation date of the device.
    const bool isLater = day >= local_days(2022y / September / 20);
    char address[24];
    std::snprintf(address, sizeof address, "0x%x%06x0", isLater ? 0x30U : 0x28U,
                  random.below(1U << 22));
    append(text, " device=\"&lt;&lt;HKDevice: ", string_view(address), "&gt;, ", source.device);
    if (!source.models.empty()) {
        const auto model = since * source.models.size() / ((lastDay - firstDay).count() + 1);
        append(text, ", hardware:", source.models[model]);
    }
    append(text, ", software:", version);
    if (isLater) {
        append(text, ", creation date:", dayText(day - days(since % 365)), " 09:31:07 +0000");
    }
    append(text, "&gt;\"");
    return text;
}

struct Times {
    local_seconds created;
    local_seconds start;
    local_seconds end;
};

/// The time of an element, by its position in a section.
struct Moment {
    local_days day;
    seconds ofDay;      // the time of day, in proportion to the bytes already written for the day
    std::int64_t left;  // the number of elements that still fit into the day, at least 1
};

class Export {
  public:
    Export(std::uint64_t seed, std::uint64_t size, std::FILE* file, StepSums& sums)
        : _seed(seed), _size(size), _file(file), _sums(sums), _random(seed) {}

    bool write() {
        writeProlog();
        _begin = place();
        for (const RecordType& type : recordTypes) {
            writeRecords(type);
        }
        fill(correlationShare, firstDay, [this](const Moment& moment) { addPressure(moment); });
        fill(workoutShare, firstDay, [this](const Moment& moment) { addWorkout(moment); });
        writeSummaries();
        append(_text, "</HealthData>\n");
        flush();
        return !_failed;
    }

  private:
    /// Successive records from one source, with the same address of the device.
    struct Burst {
        int left = 0;
        bool storedAtOnce = false;
        local_seconds created{};
        local_seconds end{};  // the end of the last record
        std::string source;
    };

    std::uint64_t place() const { return _written + _text.size(); }

    void flush() {
        _written += _text.size();
        _failed = _failed || std::fwrite(_text.data(), 1, _text.size(), _file) != _text.size();
        _text.clear();
    }

    /// Writes a section whose first day is `since`: calls `add`, which appends one element, until
    /// the section has its share of the bytes.
    void fill(unsigned share, local_days since, auto add) {
        _shares += share;
        const std::uint64_t room = _size > _begin ? _size - _begin : 0;
        const std::uint64_t begin = place();
        const std::uint64_t end = _begin + room * _shares / allShares;
        const auto days = static_cast<std::uint64_t>((lastDay - since).count() + 1);
        std::uint64_t length = 440;  // of the last element; at first, of an average record
        for (std::uint64_t at = begin; at + length / 2 < end && !_failed; at = place()) {
            const std::uint64_t bytes = end - begin;
            const std::uint64_t passed = (at - begin) * days;
            const std::uint64_t ofDay = passed % bytes;
            const std::uint64_t left = (bytes - ofDay) / (length * days);
            add(Moment{since + std::chrono::days(passed / bytes),
                       seconds(ofDay / days * 86400 / (bytes / days + 1)),
                       static_cast<std::int64_t>(std::max<std::uint64_t>(left, 1))});
            length = place() - at;
            if (_text.size() >= blockSize) {
                flush();
            }
        }
    }

    void writeProlog() {
        append(_text, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE HealthData [\n"
                      "<!-- HealthKit Export Version: 14 -->\n");
        append(_text, _size < declarationsFrom ? "" : declarations);
        append(_text, "]>\n<HealthData locale=\"en_US\">\n <ExportDate value=\"",
               dateText(lastDay + 24h),
               "\"/>\n <Me HKCharacteristicTypeIdentifierDateOfBirth=\"1984-06-12\" "
               "HKCharacteristicTypeIdentifierBiologicalSex=\"HKBiologicalSexNotSet\"/>\n");
    }

    void writeRecords(const RecordType& type) {
        const local_days since = std::max(firstDay, local_days(year(type.since) / January / 1));
        Burst burst;
        if (type.name == "StepCount") {
            fill(type.share, since, [&](const Moment& at) { addSteps(type, at, burst); });
            if (_stepsDay == local_days::min()) {  // even the smallest export has a step record
                addSteps(type, {firstDay, 0s, 1}, burst);
            }
            return;
        }
        int value = type.range.low;
        fill(type.share, since, [&](const Moment& moment) {
            const int length = _random.between(type.seconds[0], type.seconds[1]);
            const Times times = timesOf(type, moment, seconds(length), burst);
            if (!type.categories.empty()) {
                addRecord(type, burst.source, times, _random.oneOf(type.categories));
            } else {
                value = valueAfter(value, type.range);
                addRecord(type, burst.source, times, value * type.range.unit);
            }
        });
    }

    /// A random value. Most are near the previous one; the others are more often low than high.
    int valueAfter(int value, const Range& range) {
        const int most = (range.high - range.low) / 8 + 1;
        value += _random.between(-most, most);
        return range.low <= value && value <= range.high && !_random.oneIn(5)
                   ? value
                   : std::min(_random.between(range.low, range.high),
                              _random.between(range.low, range.high));
    }

    /// The times of the next record. Starts a new burst if the last one is over. A record that
    /// would overlap the previous one starts where that one ends, unless this is ten minutes later
    /// or more. All records start on `moment.day`.
    Times timesOf(const RecordType& type, const Moment& moment, seconds length, Burst& burst) {
        if (burst.left == 0) {
            burst.left = 1 + static_cast<int>(_random.below(1U << _random.below(7)));
            burst.storedAtOnce = _random.oneIn(3);
            burst.source = sourceText(*_random.oneOf(type.sources), moment.day, _random);
        }
        --burst.left;
        const int open = type.hours[1] - type.hours[0];
        local_seconds start = moment.day + hours(type.hours[0]) + moment.ofDay * open / 24 +
                              seconds(_random.below(240));
        if (start < burst.end && burst.end < start + 600s) {
            start = burst.end;
        }
        start = std::min(start, local_seconds(moment.day + 24h - 1s));
        burst.end = start + length;
        if (!burst.storedAtOnce || burst.created < burst.end || burst.created > burst.end + 1800s) {
            burst.created = burst.end + seconds(_random.below(burst.storedAtOnce ? 1800 : 90));
        }
        return {burst.created, start, burst.end};
    }

    void addSteps(const RecordType& type, const Moment& moment, Burst& burst) {
        if (moment.day != _stepsDay) {
            _stepsDay = moment.day;
            _stepsLeft = stepsOn(moment.day);
        }
        std::int64_t steps = _stepsLeft / moment.left;
        if (moment.left > 1) {
            steps = steps * _random.between(40, 160) / 100;
        }
        steps = steps > 0 ? steps : _random.between(1, 40);
        _stepsLeft = std::max<std::int64_t>(_stepsLeft - steps, 0);

        const seconds length(1 + steps * _random.between(50, 100) / 100);
        const Times times = timesOf(type, moment, length, burst);
        addRecord(type, burst.source, times, steps);
        _sums.add(sys_seconds(times.start.time_since_epoch()) - offsetOn(moment.day), steps);
    }

    /// The steps to be written for a day.
    std::int64_t stepsOn(local_days day) const {
        Random random(_seed ^ (static_cast<std::uint64_t>(day.time_since_epoch().count()) << 32));
        const bool isWeekend = weekday(day) == Saturday || weekday(day) == Sunday;
        int steps = isWeekend ? 5200 : 3900;
        for (int i = 0; i < 3; ++i) {  // a sum of random numbers is mostly near the middle
            steps += random.between(0, 3000);
        }
        return random.oneIn(40) ? steps + random.between(4000, 9000) : steps;
    }

    void addRecord(const RecordType& type, const std::string& source, const Times& times,
                   const auto& value, string_view indent = " ") {
        append(_text, indent, "<Record type=\"HK", type.unit.empty() ? "Category" : "Quantity",
               "TypeIdentifier", type.name, "\"", source);
        if (!type.unit.empty()) {
            append(_text, " unit=\"", type.unit, "\"");
        }
        addTimes(times);
        append(_text, " value=\"", value, "\"");
        const bool hasMetadata = type.metadata != nullptr && _random.oneIn(type.metadata->oneIn);
        const bool hasBeats = type.name == "HeartRateVariabilitySDNN";
        if (!hasMetadata && !hasBeats) {
            append(_text, "/>\n");
            return;
        }
        append(_text, ">\n");
        if (hasMetadata) {
            append(_text, indent, " <MetadataEntry key=\"", type.metadata->key, "\" value=\"",
                   _random.oneOf(type.metadata->values), "\"/>\n");
        }
        if (hasBeats) {
            addBeats(times.start);
        }
        append(_text, indent, "</Record>\n");
    }

    void addTimes(const Times& times) {
        append(_text, " creationDate=\"", dateText(times.created), "\" startDate=\"",
               dateText(times.start), "\" endDate=\"", dateText(times.end), "\"");
    }

    void addBeats(local_seconds start) {
        append(_text, "  <HeartRateVariabilityMetadataList>\n");
        auto hundredths =
            duration_cast<duration<int, std::centi>>(start - floor<days>(start)).count();
        for (int beats = _random.between(8, 40); beats > 0; --beats) {
            const int perMinute = _random.between(49, 84);
            hundredths = (hundredths + 6000 / perMinute) % 8640000;
            const int hour = hundredths / 360000;
            char time[32];
            std::snprintf(time, sizeof time, "%d:%02d:%02d.%02d", (hour + 11) % 12 + 1,
                          hundredths / 6000 % 60, hundredths / 100 % 60, hundredths % 100);
            // A narrow no-break space precedes AM and PM.
            append(_text, "   <InstantaneousBeatsPerMinute bpm=\"", perMinute, "\" time=\"",
                   string_view(time), "\u202f", hour < 12 ? "AM" : "PM", "\"/>\n");
        }
        append(_text, "  </HeartRateVariabilityMetadataList>\n");
    }

    /// A blood pressure: a correlation of two records.
    void addPressure(const Moment& moment) {
        const local_seconds start = moment.day + 7h + moment.ofDay / 2;
        const Times times = {start + seconds(_random.between(5, 90)), start, start};
        const std::string source = sourceText(cuff, moment.day, _random);
        append(_text, " <Correlation type=\"HKCorrelationTypeIdentifierBloodPressure\"", source);
        addTimes(times);
        append(_text, ">\n");
        for (const RecordType& type : recordTypes) {
            if (&type.sources.front() == &byCuff.front()) {
                const int value = _random.between(type.range.low, type.range.high);
                addRecord(type, source, times, value, "  ");
            }
        }
        append(_text, " </Correlation>\n");
    }

    void addWorkout(const Moment& moment) {
        const local_seconds start = moment.day + 7h + moment.ofDay / 2;
        const int length = _random.between(900, 5400);
        const Times times = {start + seconds(length + 3), start, start + seconds(length)};
        append(_text, " <Workout workoutActivityType=\"HKWorkoutActivityType",
               _random.oneOf(activities), "\" duration=\"", length / 60.0,
               "\" durationUnit=\"min\"");
        append(_text, sourceText(watch, moment.day, _random));
        addTimes(times);
        append(_text, ">\n  <MetadataEntry key=\"HKIndoorWorkout\" value=\"", _random.below(2),
               "\"/>\n");
        append(_text,
               "  <WorkoutStatistics type=\"HKQuantityTypeIdentifierActiveEnergyBurned\" "
               "startDate=\"",
               dateText(times.start), "\" endDate=\"", dateText(times.end), "\" sum=\"",
               length * _random.between(90, 160) / 1e3, "\" unit=\"kcal\"/>\n </Workout>\n");
    }

    /// An activity summary for each day. Small exports have fewer summaries, so that these keep to
    /// their share of the bytes.
    void writeSummaries() {
        constexpr std::int64_t length = 270;
        const days all = lastDay - firstDay;
        const auto room = static_cast<std::int64_t>(_size) * summaryShare / allShares;
        const days every(1 + length * all.count() / (room + 1));
        for (local_days day = firstDay + every; day <= lastDay; day += every) {
            append(_text, " <ActivitySummary dateComponents=\"", dayText(day),
                   "\" activeEnergyBurned=\"", _random.between(100000, 999999) / 1e3);
            append(_text,
                   "\" activeEnergyBurnedGoal=\"450\" activeEnergyBurnedUnit=\"kcal\""
                   " appleExerciseTime=\"",
                   _random.between(10, 99));
            append(_text, "\" appleStandHours=\"", _random.between(7, 16),
                   "\" appleStandHoursGoal=\"12\"/>\n");
        }
    }

    std::uint64_t _seed;
    std::uint64_t _size;
    std::FILE* _file;
    StepSums& _sums;
    Random _random;
    std::string _text;           // not yet in the file
    std::uint64_t _written = 0;  // bytes in the file
    std::uint64_t _begin = 0;    // the position after the prolog
    unsigned _shares = 0;        // the sum of the shares of the sections so far
    bool _failed = false;
    local_days _stepsDay = local_days::min();  // the day of the last step record
    std::int64_t _stepsLeft = 0;               // still to be written for _stepsDay
};

}  // namespace

bool writeExport(std::uint64_t seed, std::uint64_t size, std::FILE* file, StepSums& sums) {
    return Export(seed, size, file, sums).write();
}

}  // namespace makeexport
