#include "makeexport/Records.h"

#include "makeexport/Text.h"

#include <algorithm>

namespace makeexport {

using namespace std::chrono;

namespace {

seconds startOfDay(const RecordType& type, const Moment& moment, Random& random) {
    const seconds open = type.hours.until - type.hours.from;
    return type.hours.from + open * moment.ofDay.count() / 86400 + seconds(random.below(60));
}

Times timesOf(sys_seconds start, seconds length, Random& random) {
    const sys_seconds end = start + length;
    return {end + seconds(random.between(1, 1500)), start, end};
}

}  // namespace

Records::Records(const RecordType& type, const Clock& clock, Random random)
    : _type(type), _clock(clock), _random(random), _text(type, clock, Random(_random.next())) {}

void Records::append(Element& element, const Moment& moment) {
    const Source& source = sourceOn(moment.day, _random.oneOf(_type.makers));
    const Length& length = _type.length;
    const Times times = timesOf(_clock.instantOf(moment.day + startOfDay(_type, moment, _random)),
                                seconds(_random.between(static_cast<int>(length.shortest.count()),
                                                        static_cast<int>(length.longest.count()))),
                                _random);
    pickValue();
    _text.append(element.text, " ", source, times, _value);
}

void Records::pickValue() {
    _value.clear();
    if (!_type.categories.empty()) {
        _value += _random.oneOf(_type.categories);
        return;
    }
    const Range& range = _type.range;
    const int one = _random.between(range.low, range.high);
    const int other = _random.between(range.low, range.high);
    appendDecimal(_value, std::min(one, other), range.decimals);
}

StepRecords::StepRecords(const StepPlan& plan, const Clock& clock, Random random)
    : _type(recordType("StepCount")), _plan(plan), _clock(clock), _random(random),
      _text(_type, clock, Random(_random.next())) {}

void StepRecords::append(Element& element, const Moment& moment) {
    const std::int64_t steps = pickSteps(moment);
    const Source& source = sourceOn(moment.day, _random.oneOf(_type.makers));

    // One to two steps a second, and no end after midnight: a day without steps stays one.
    const seconds length = seconds(steps * _random.between(50, 100) / 100 + 1);
    const seconds start = std::min(startOfDay(_type, moment, _random), 24h - 1s - length);
    const Times times = timesOf(_clock.instantOf(moment.day + start), length, _random);

    _value.clear();
    appendNumber(_value, steps);
    _text.append(element.text, " ", source, times, _value);
    element.steps.push_back({times.start, steps});
}

std::int64_t StepRecords::pickSteps(const Moment& moment) {
    if (moment.day != _day) {
        _day = moment.day;
        _leftOfDay = _plan.stepsOn(_day);
    }
    std::int64_t steps = _leftOfDay / moment.left;
    if (moment.left > 1) {
        steps = steps * _random.between(50, 150) / 100;
    }
    if (steps < 1) {
        steps = _random.between(1, 40);
    }
    _leftOfDay = std::max<std::int64_t>(_leftOfDay - steps, 0);
    return steps;
}

}  // namespace makeexport
