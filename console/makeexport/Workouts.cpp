#include "makeexport/Workouts.h"

#include "makeexport/Text.h"

#include <array>

namespace makeexport {

using namespace std::chrono;

namespace {

struct Activity {
    std::string_view name;
    std::string_view distance;  // the type of record that measures it; empty: stays in one place
    bool onFoot;
};

constexpr std::array<Activity, 5> activities = {{
    {"Walking", "DistanceWalkingRunning", true},
    {"Running", "DistanceWalkingRunning", true},
    {"Cycling", "DistanceCycling", false},
    {"Yoga", "", false},
    {"FunctionalStrengthTraining", "", false},
}};

void appendFigure(std::string& text, std::string_view name, std::int64_t scaled, int decimals) {
    text += ' ';
    text += name;
    text += "=\"";
    appendDecimal(text, scaled, decimals);
    text += '"';
}

}  // namespace

void Workouts::append(Element& element, const Moment& moment) {
    std::string& text = element.text;
    const Activity& activity = _random.oneOf(activities);
    const Source& source = sourceOn(moment.day, Maker::Watch);
    const sys_seconds start = _clock.instantOf(moment.day + 7h + moment.ofDay * 13 / 24);
    const seconds length(_random.between(900, 5400));
    const Times times = {start + length + 3s, start, start + length};

    text += " <Workout workoutActivityType=\"HKWorkoutActivityType";
    text += activity.name;
    text += '"';
    appendFigure(text, "duration", length.count() * 1000 / 60, 3);
    appendAttribute(text, "durationUnit", "min");
    appendSource(text, source, _random);
    appendTimes(text, _dates, times);
    text += ">\n";

    const bool outdoors = !activity.distance.empty();
    appendMetadata(text, " ", "HKIndoorWorkout", outdoors ? "0" : "1");
    appendMetadata(text, " ", "HKTimeZone", _clock.stretchAt(start).zone->name);
    appendEvents(text, times);

    std::string figures;
    appendFigure(figures, "sum", length.count() * _random.between(90, 160), 3);
    appendStatistics(text, "ActiveEnergyBurned", times, figures, "kcal");
    figures.clear();
    appendFigure(figures, "average", _random.between(10400, 13900), 2);
    appendFigure(figures, "minimum", _random.between(71, 98), 0);
    appendFigure(figures, "maximum", _random.between(141, 178), 0);
    appendStatistics(text, "HeartRate", times, figures, "count/min");
    if (activity.onFoot) {
        figures.clear();
        appendFigure(figures, "sum", length.count() * _random.between(13, 26) / 10, 0);
        appendStatistics(text, "StepCount", times, figures, "count");
    }
    if (outdoors) {
        figures.clear();
        appendFigure(figures, "sum", length.count() * _random.between(110, 390), 5);
        appendStatistics(text, activity.distance, times, figures, "km");
        appendRoute(text, source, times);
    }
    text += " </Workout>\n";
}

void Workouts::appendEvents(std::string& text, const Times& times) {
    constexpr std::array<std::string_view, 3> types = {"Segment", "Lap", "Marker"};
    const seconds length = times.end - times.start;
    const int events = _random.between(0, 8);
    for (int i = 0; i < events; ++i) {
        text += "  <WorkoutEvent type=\"HKWorkoutEventType";
        text += _random.oneOf(types);
        text += "\" date=\"";
        _dates.append(text, times.start + length * i / events);
        text += '"';
        appendFigure(text, "duration", length.count() * 1000 / 60 / events, 3);
        text += " durationUnit=\"min\"/>\n";
    }
}

void Workouts::appendStatistics(std::string& text, std::string_view type, const Times& times,
                                std::string_view figures, std::string_view unit) {
    text += "  <WorkoutStatistics type=\"HKQuantityTypeIdentifier";
    text += type;
    text += "\" startDate=\"";
    _dates.append(text, times.start);
    text += "\" endDate=\"";
    _dates.append(text, times.end);
    text += '"';
    text += figures;
    appendAttribute(text, "unit", unit);
    text += "/>\n";
}

void Workouts::appendRoute(std::string& text, const Source& source, const Times& times) {
    text += "  <WorkoutRoute";
    appendSource(text, source, _random);
    appendTimes(text, _dates, times);
    text += ">\n";
    appendMetadata(text, "  ", "HKMetadataKeySyncVersion", "2");
    text += "   <FileReference path=\"/workout-routes/route_";
    appendNumber(text, times.end.time_since_epoch().count());
    text += ".gpx\"/>\n  </WorkoutRoute>\n";
}

}  // namespace makeexport
