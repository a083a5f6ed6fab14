#include "makeexport/Correlations.h"

#include "makeexport/Text.h"

#include <array>
#include <utility>

namespace makeexport {

using namespace std::chrono;

namespace {

constexpr std::array<std::string_view, 4> meals = {"Müsli &amp; Äpfel", "Crème brûlée", "お茶漬け",
                                                   "Fish &amp; chips"};

/// `lines`, each a blank further in.
void appendIndented(std::string& text, std::string_view lines) {
    while (!lines.empty()) {
        const std::size_t length = lines.find('\n') + 1;
        text += ' ';
        text += lines.substr(0, length);
        lines.remove_prefix(length);
    }
}

}  // namespace

Correlations::Correlations(std::vector<Element> stepRecords, const Clock& clock, Random random)
    : _stepRecords(std::move(stepRecords)), _clock(clock), _dates(clock), _random(random),
      _systolic(recordType("BloodPressureSystolic"), clock, Random(_random.next())),
      _diastolic(recordType("BloodPressureDiastolic"), clock, Random(_random.next())),
      _water(recordType("DietaryWater"), clock, Random(_random.next())) {}

void Correlations::append(Element& element, const Moment& moment) {
    const sys_seconds start = _clock.instantOf(moment.day + 7h + moment.ofDay / 2);
    const Times times = {start + seconds(_random.between(5, 90)), start, start};

    if (_repeated < _stepRecords.size() && _stepRecords[_repeated].steps.front().start <= start) {
        const Element& record = _stepRecords[_repeated++];
        const sys_seconds first = record.steps.front().start;
        open(element, "Food", sourceOn(moment.day, Maker::Diary), {first, first, first});
        appendIndented(element.text, record.text);
        element.steps = record.steps;
    } else if (_random.oneIn(3)) {
        appendMeal(element, sourceOn(moment.day, Maker::Diary), times);
    } else {
        appendPressure(element, sourceOn(moment.day, Maker::Cuff), times);
    }
    element.text += " </Correlation>\n";
}

void Correlations::open(Element& element, std::string_view type, const Source& source,
                        const Times& times) {
    element.text += " <Correlation type=\"HKCorrelationTypeIdentifier";
    element.text += type;
    element.text += '"';
    appendSource(element.text, source, _random);
    appendTimes(element.text, _dates, times);
    element.text += ">\n";
}

void Correlations::appendPressure(Element& element, const Source& source, const Times& times) {
    open(element, "BloodPressure", source, times);
    std::string value;
    appendNumber(value, _random.between(104, 141));
    _systolic.append(element.text, "  ", source, times, value);
    value.clear();
    appendNumber(value, _random.between(64, 92));
    _diastolic.append(element.text, "  ", source, times, value);
}

void Correlations::appendMeal(Element& element, const Source& source, const Times& times) {
    open(element, "Food", source, times);
    appendMetadata(element.text, " ", "HKFoodType", _random.oneOf(meals));
    std::string value;
    appendNumber(value, _random.between(150, 500));
    _water.append(element.text, "  ", source, times, value);
}

}  // namespace makeexport
