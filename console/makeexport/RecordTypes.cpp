#include "makeexport/RecordTypes.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace makeexport {

using namespace std::chrono_literals;
using std::string_view;

namespace {

using enum Maker;

constexpr std::array phone = {Phone};
constexpr std::array watch = {Watch};
constexpr std::array both = {Phone, Watch, Watch};
constexpr std::array steppers = {Phone, Phone, Phone, Watch, Watch, Watch, Watch, Pedometer};
constexpr std::array scale = {Scale};
constexpr std::array cuff = {Cuff};
constexpr std::array diary = {Diary};

constexpr Hours always = {0h, 24h};
constexpr Hours awake = {6h, 23h + 50min};
constexpr Hours morning = {6h, 9h};
constexpr Hours night = {22h, 31h};

constexpr Length instant = {0s, 0s};
constexpr Length seconds = {2s, 60s};
constexpr Length minute = {60s, 60s};
constexpr Length someMinutes = {20s, 600s};
constexpr Length halfHour = {1800s, 1800s};
constexpr Length hour = {3600s, 3600s};
constexpr Length wholeDay = {36000s, 54000s};

constexpr std::array<string_view, 3> motions = {"0", "1", "2"};
constexpr std::array<string_view, 1> yes = {"1"};
constexpr std::array<string_view, 2> zones = {"America/New_York", "Europe/Paris"};
constexpr std::array<string_view, 2> notes = {"Fahrrad &amp; zurück", "&lt;ohne Titel&gt;"};
constexpr Metadata motion = {"HKMetadataKeyHeartRateMotionContext", motions, 2};
constexpr Metadata byHand = {"HKWasUserEntered", yes, 1};
constexpr Metadata rarelyByHand = {"HKWasUserEntered", yes, 90};
constexpr Metadata sleepZone = {"HKTimeZone", zones, 1};
constexpr Metadata note = {"Notiz", notes, 4};

constexpr std::array<string_view, 5> sleep = {
    "HKCategoryValueSleepAnalysisInBed", "HKCategoryValueSleepAnalysisAsleepCore",
    "HKCategoryValueSleepAnalysisAsleepREM", "HKCategoryValueSleepAnalysisAsleepDeep",
    "HKCategoryValueSleepAnalysisAwake"};
constexpr std::array<string_view, 2> stand = {"HKCategoryValueAppleStandHourStood",
                                              "HKCategoryValueAppleStandHourIdle"};
constexpr std::array<string_view, 1> none = {"HKCategoryValueNotApplicable"};

// clang-format off
constexpr std::array types = {
    RecordType{"BodyMassIndex", 10, 2015, scale, morning, instant, "count", {2140, 2480, 2}},
    RecordType{"Height", 2, 2015, diary, awake, instant, "cm", {171, 172, 0}, {}, &byHand},
    RecordType{"BodyMass", 15, 2015, scale, morning, instant, "kg", {628, 727, 1}},
    RecordType{"HeartRate", 1500, 2015, watch, always, instant, "count/min", {46, 168, 0}, {}, &motion},
    RecordType{"OxygenSaturation", 80, 2020, watch, always, instant, "%", {93, 100, 2}},
    RecordType{"BodyFatPercentage", 10, 2015, scale, morning, instant, "%", {192, 264, 3}},
    RecordType{"BloodPressureSystolic", 8, 2015, cuff, morning, instant, "mmHg", {104, 141, 0}},
    RecordType{"BloodPressureDiastolic", 8, 2015, cuff, morning, instant, "mmHg", {64, 92, 0}},
    RecordType{"RespiratoryRate", 120, 2020, watch, night, instant, "count/min", {110, 205, 1}},
    RecordType{"StepCount", 800, 2015, steppers, awake, someMinutes, "count", {}, {}, &rarelyByHand},
    RecordType{"DistanceWalkingRunning", 850, 2015, both, awake, someMinutes, "km", {2000, 812000, 6}},
    RecordType{"BasalEnergyBurned", 1500, 2015, watch, always, someMinutes, "kcal", {512, 21340, 3}},
    RecordType{"ActiveEnergyBurned", 3200, 2015, watch, always, seconds, "kcal", {37, 8720, 3}},
    RecordType{"FlightsClimbed", 90, 2015, phone, awake, someMinutes, "count", {1, 9, 0}},
    RecordType{"DietaryWater", 12, 2015, diary, awake, instant, "mL", {150, 750, 0}, {}, &byHand},
    RecordType{"AppleExerciseTime", 150, 2015, watch, awake, minute, "min", {1, 1, 0}},
    RecordType{"DistanceCycling", 40, 2015, watch, awake, seconds, "km", {900, 91500, 6}, {}, &note},
    RecordType{"RestingHeartRate", 25, 2017, watch, always, wholeDay, "count/min", {48, 67, 0}},
    RecordType{"VO2Max", 10, 2017, watch, awake, instant, "mL/min·kg", {3310, 4620, 2}},
    RecordType{"WalkingHeartRateAverage", 25, 2017, watch, morning, wholeDay, "count/min", {840, 1180, 1}},
    RecordType{"EnvironmentalAudioExposure", 200, 2019, watch, always, halfHour, "dBASPL", {421000, 938000, 4}},
    RecordType{"HeadphoneAudioExposure", 120, 2019, phone, awake, someMinutes, "dBASPL", {480000, 891000, 4}},
    RecordType{"WalkingDoubleSupportPercentage", 110, 2020, phone, awake, seconds, "%", {240, 341, 3}},
    RecordType{"SixMinuteWalkTestDistance", 5, 2020, watch, awake, instant, "m", {440, 500, 0}},
    RecordType{"AppleStandTime", 170, 2020, watch, awake, someMinutes, "min", {1, 5, 0}},
    RecordType{"WalkingSpeed", 100, 2020, phone, awake, seconds, "km/hr", {2980, 6120, 3}},
    RecordType{"WalkingStepLength", 100, 2020, phone, awake, seconds, "cm", {52, 84, 0}},
    RecordType{"WalkingAsymmetryPercentage", 60, 2020, phone, awake, seconds, "%", {0, 21, 2}},
    RecordType{"StairAscentSpeed", 30, 2020, watch, awake, seconds, "m/s", {21, 58, 2}},
    RecordType{"StairDescentSpeed", 30, 2020, watch, awake, seconds, "m/s", {24, 61, 2}},
    RecordType{"HeartRateVariabilitySDNN", 120, 2017, watch, always, minute, "ms", {142318, 911730, 4}, {}, nullptr, true},
    RecordType{"PhysicalEffort", 100, 2023, watch, awake, someMinutes, "kcal/hr·kg", {11, 94, 1}},
    RecordType{"AppleSleepingWristTemperature", 8, 2023, watch, night, hour, "degC", {347000, 368000, 4}},
    RecordType{"TimeInDaylight", 30, 2023, watch, awake, someMinutes, "min", {1, 10, 0}},
    RecordType{"SleepAnalysis", 120, 2015, both, night, hour, "", {}, sleep, &sleepZone},
    RecordType{"AppleStandHour", 100, 2015, watch, awake, hour, "", {}, stand},
    RecordType{"MindfulSession", 2, 2017, diary, awake, someMinutes, "", {}, none},
};
// clang-format on

constexpr unsigned allShares() {
    unsigned sum = correlationShare + workoutShare;
    for (const RecordType& type : types) {
        sum += type.share;
    }
    return sum;
}
static_assert(allShares() == 10000);

}  // namespace

string_view RecordType::prefix() const {
    return unit.empty() ? "HKCategoryTypeIdentifier" : "HKQuantityTypeIdentifier";
}

std::span<const RecordType> recordTypes() {
    return types;
}

const RecordType& recordType(string_view name) {
    return *std::ranges::find(types, name, &RecordType::name);
}

}  // namespace makeexport
