#pragma once

#include <array>
#include <chrono>
#include <numeric>
#include <span>
#include <string_view>

/// The constants of an export: devices, types of records and their frequency, offsets from UTC,
/// declarations. Only Export.cpp includes this header.
namespace makeexport {

using namespace std::chrono_literals;
using std::string_view;

struct Source {
    string_view name;
    string_view device;                   // empty if records from the source have no device
    std::span<const string_view> models;  // successive models over the ten years; may be empty
    int major;  // the system version in the first year; one more each autumn
};

constexpr std::array<string_view, 5> phones = {"iPhone7,2", "iPhone10,4", "iPhone12,1",
                                               "iPhone13,1", "iPhone15,4"};
constexpr std::array<string_view, 4> watches = {"Watch1,2", "Watch3,4", "Watch6,1", "Watch7,4"};

// The names of the phone and the watch have a typographic apostrophe. That of the watch has a
// no-break space, too.
constexpr Source phone = {"Zoë’s iPhone", "name:iPhone, manufacturer:Apple Inc., model:iPhone",
                          phones, 9};
constexpr Source watch = {"Zoë’s Apple\u00a0Watch",
                          "name:Apple Watch, manufacturer:Apple Inc., model:Watch", watches, 2};
constexpr Source pedometer = {"歩数計 &amp; Pas à Pas", "", {}, 2};
constexpr Source scale = {
    "Körperwaage Größe L", "name:Body scale, manufacturer:Vågen, model:VG 2", {}, 1};
constexpr Source cuff = {
    "Cœur &amp; Pouls", "name:BPM, manufacturer:Cœur &amp; Pouls, model:BP-4", {}, 5};

constexpr std::array<const Source*, 1> byPhone = {&phone};
constexpr std::array<const Source*, 1> byWatch = {&watch};
constexpr std::array<const Source*, 3> byBoth = {&phone, &watch, &watch};
constexpr std::array<const Source*, 6> bySteppers = {&phone, &phone, &watch,
                                                     &watch, &watch, &pedometer};
constexpr std::array<const Source*, 1> byScale = {&scale};
constexpr std::array<const Source*, 1> byCuff = {&cuff};

using Hours = std::array<int, 2>;  // of the day: from, until
constexpr Hours always = {0, 24};
constexpr Hours awake = {6, 24};
constexpr Hours morning = {6, 9};

/// Integers from `low` to `high`, times `unit`.
struct Range {
    int low;
    int high;
    double unit;
};

struct Metadata {
    string_view key;
    std::array<string_view, 4> values;
    unsigned oneIn;  // one record in `oneIn` has it
};
constexpr Metadata motion = {"HKMetadataKeyHeartRateMotionContext", {"0", "0", "1", "2"}, 1};
constexpr Metadata byHand = {"HKWasUserEntered", {"1", "1", "1", "1"}, 90};
constexpr Metadata calibrated = {"HKMetadataKeyAppleDeviceCalibrated", {"0", "1", "1", "1"}, 3};
constexpr Metadata sleepZone = {
    "HKTimeZone", {"America/New_York", "America/New_York", "Europe/Paris", "Asia/Tokyo"}, 1};

constexpr std::array<string_view, 5> sleep = {
    "HKCategoryValueSleepAnalysisInBed", "HKCategoryValueSleepAnalysisAsleepCore",
    "HKCategoryValueSleepAnalysisAsleepREM", "HKCategoryValueSleepAnalysisAsleepDeep",
    "HKCategoryValueSleepAnalysisAwake"};
constexpr std::array<string_view, 2> stand = {"HKCategoryValueAppleStandHourStood",
                                              "HKCategoryValueAppleStandHourIdle"};

struct RecordType {
    string_view name;
    unsigned share;  // share of the bytes, see allShares
    int since;       // the first year
    std::span<const Source* const> sources;
    Hours hours;
    std::array<int, 2> seconds;  // the shortest and longest duration; unused for StepCount
    string_view unit;            // empty for a category
    Range range;
    const Metadata* metadata = nullptr;
    std::span<const string_view> categories = {};
};

// In the order in which an export has them.
// clang-format off
constexpr std::array recordTypes = {
    RecordType{"BodyMass", 15, 2015, byScale, morning, {0, 0}, "kg", {6280, 7270, 0.01}},
    RecordType{"HeartRate", 1500, 2015, byWatch, always, {0, 0}, "count/min", {46, 168, 1}, &motion},
    RecordType{"OxygenSaturation", 80, 2020, byWatch, always, {0, 15}, "%", {93, 100, 0.01}},
    RecordType{"BloodPressureSystolic", 8, 2015, byCuff, morning, {0, 0}, "mmHg", {104, 141, 1}},
    RecordType{"BloodPressureDiastolic", 8, 2015, byCuff, morning, {0, 0}, "mmHg", {64, 92, 1}},
    RecordType{"StepCount", 800, 2015, bySteppers, awake, {20, 600}, "count", {}, &byHand},
    RecordType{"DistanceWalkingRunning", 850, 2015, byBoth, awake, {20, 600}, "km", {2000, 812000, 1e-6}},
    RecordType{"BasalEnergyBurned", 1500, 2015, byWatch, always, {60, 900}, "kcal", {512, 21340, 1e-3}},
    RecordType{"ActiveEnergyBurned", 3200, 2015, byWatch, always, {2, 60}, "kcal", {37, 8720, 1e-3}},
    RecordType{"FlightsClimbed", 90, 2015, byPhone, awake, {20, 600}, "count", {1, 9, 1}},
    RecordType{"EnvironmentalAudioExposure", 200, 2019, byWatch, always, {600, 1800}, "dBASPL", {421000, 938000, 1e-4}},
    RecordType{"AppleStandTime", 170, 2020, byWatch, awake, {300, 300}, "min", {1, 5, 1}},
    RecordType{"WalkingSpeed", 100, 2020, byPhone, awake, {2, 60}, "km/hr", {29800, 61200, 1e-4}, &calibrated},
    RecordType{"WalkingStepLength", 100, 2020, byPhone, awake, {2, 60}, "cm", {52, 84, 1}, &calibrated},
    RecordType{"HeartRateVariabilitySDNN", 140, 2017, byWatch, always, {60, 60}, "ms", {142318, 911730, 1e-4}},
    RecordType{"SleepAnalysis", 120, 2015, byBoth, always, {60, 3600}, "", {}, &sleepZone, sleep},
    RecordType{"AppleStandHour", 100, 2015, byWatch, awake, {3600, 3600}, "", {}, nullptr, stand},
};
// clang-format on

constexpr unsigned correlationShare = 20;
constexpr unsigned workoutShare = 130;
constexpr unsigned summaryShare = 50;
constexpr unsigned allShares = std::accumulate(
    recordTypes.begin(), recordTypes.end(), correlationShare + workoutShare + summaryShare,
    [](unsigned sum, const RecordType& type) { return sum + type.share; });

/// From the day `since` of each year, the offset from UTC is `offset`. The value `abroad` stands
/// for a journey in July, whose offset depends on the year (`journeys`).
struct OffsetChange {
    std::chrono::month_day since;
    std::chrono::minutes offset;
};
constexpr std::chrono::minutes abroad = 24h;
constexpr std::array<OffsetChange, 5> offsetChanges = {{{std::chrono::January / 1, -5h},
                                                        {std::chrono::March / 12, -4h},
                                                        {std::chrono::July / 11, abroad},
                                                        {std::chrono::July / 26, -4h},
                                                        {std::chrono::November / 5, -5h}}};
constexpr std::array<std::chrono::minutes, 5> journeys = {2h, 9h, 5h + 45min, -10h, 5h + 30min};

inline std::chrono::minutes offsetOn(std::chrono::local_days day) {
    const std::chrono::year_month_day date(day);
    std::chrono::minutes offset{};
    for (const OffsetChange& change : offsetChanges) {
        if (change.since <= date.month() / date.day()) {
            offset = change.offset;
        }
    }
    const auto year = static_cast<unsigned>(int(date.year()));
    return offset == abroad ? journeys[year % journeys.size()] : offset;
}

constexpr std::array<string_view, 5> activities = {"Walking", "Running", "Cycling", "Yoga",
                                                   "FunctionalStrengthTraining"};

constexpr string_view declarations =
    R"(<!ELEMENT HealthData (ExportDate, Me, (Record | Correlation | Workout | ActivitySummary)*)>
<!ATTLIST HealthData locale CDATA #REQUIRED>
<!ELEMENT ExportDate EMPTY>
<!ATTLIST ExportDate value CDATA #REQUIRED>
<!ELEMENT Me EMPTY>
<!ATTLIST Me HKCharacteristicTypeIdentifierDateOfBirth CDATA #REQUIRED
             HKCharacteristicTypeIdentifierBiologicalSex CDATA #REQUIRED>
<!ELEMENT Record (MetadataEntry | HeartRateVariabilityMetadataList)*>
<!ATTLIST Record type CDATA #REQUIRED sourceName CDATA #REQUIRED sourceVersion CDATA #IMPLIED
                 device CDATA #IMPLIED unit CDATA #IMPLIED creationDate CDATA #IMPLIED
                 startDate CDATA #REQUIRED endDate CDATA #REQUIRED value CDATA #IMPLIED>
<!-- A Record in a Correlation may stand at top level as well. -->
<!ELEMENT Correlation (MetadataEntry | Record)*>
<!ATTLIST Correlation type CDATA #REQUIRED sourceName CDATA #REQUIRED sourceVersion CDATA #IMPLIED
                      device CDATA #IMPLIED creationDate CDATA #IMPLIED
                      startDate CDATA #REQUIRED endDate CDATA #REQUIRED>
<!ELEMENT Workout (MetadataEntry | WorkoutStatistics)*>
<!ATTLIST Workout workoutActivityType CDATA #REQUIRED duration CDATA #IMPLIED
                  durationUnit CDATA #IMPLIED sourceName CDATA #REQUIRED
                  sourceVersion CDATA #IMPLIED device CDATA #IMPLIED creationDate CDATA #IMPLIED
                  startDate CDATA #REQUIRED endDate CDATA #REQUIRED>
<!ELEMENT WorkoutStatistics EMPTY>
<!ATTLIST WorkoutStatistics type CDATA #REQUIRED startDate CDATA #REQUIRED endDate CDATA #REQUIRED
                            sum CDATA #IMPLIED unit CDATA #IMPLIED>
<!ELEMENT ActivitySummary EMPTY>
<!ATTLIST ActivitySummary dateComponents CDATA #IMPLIED
                          activeEnergyBurned CDATA #IMPLIED activeEnergyBurnedGoal CDATA #IMPLIED
                          activeEnergyBurnedUnit CDATA #IMPLIED appleExerciseTime CDATA #IMPLIED
                          appleStandHours CDATA #IMPLIED appleStandHoursGoal CDATA #IMPLIED>
<!ELEMENT MetadataEntry EMPTY>
<!ATTLIST MetadataEntry key CDATA #REQUIRED value CDATA #REQUIRED>
<!-- The beats from which a variability was measured. -->
<!ELEMENT HeartRateVariabilityMetadataList (InstantaneousBeatsPerMinute)*>
<!ELEMENT InstantaneousBeatsPerMinute EMPTY>
<!ATTLIST InstantaneousBeatsPerMinute bpm CDATA #REQUIRED time CDATA #REQUIRED>
)";

}  // namespace makeexport
