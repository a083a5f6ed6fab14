#include "makeexport/Prolog.h"

#include "makeexport/Period.h"

namespace makeexport {

namespace {

constexpr std::string_view elements =
    R"(<!ELEMENT HealthData (ExportDate, Me, (Record | Correlation | Workout | ActivitySummary)*)>
<!ATTLIST HealthData
  locale CDATA #REQUIRED
>
<!ELEMENT ExportDate EMPTY>
<!ATTLIST ExportDate
  value CDATA #REQUIRED
>
<!ELEMENT Me EMPTY>
<!ATTLIST Me
  HKCharacteristicTypeIdentifierDateOfBirth         CDATA #REQUIRED
  HKCharacteristicTypeIdentifierBiologicalSex       CDATA #REQUIRED
  HKCharacteristicTypeIdentifierBloodType           CDATA #REQUIRED
  HKCharacteristicTypeIdentifierFitzpatrickSkinType CDATA #REQUIRED
>
<!ELEMENT Record (MetadataEntry | HeartRateVariabilityMetadataList)*>
<!ATTLIST Record
  type          CDATA #REQUIRED
  sourceName    CDATA #REQUIRED
  sourceVersion CDATA #IMPLIED
  device        CDATA #IMPLIED
  unit          CDATA #IMPLIED
  creationDate  CDATA #IMPLIED
  startDate     CDATA #REQUIRED
  endDate       CDATA #REQUIRED
  value         CDATA #IMPLIED
>
<!-- A Record in a Correlation may stand at top level as well. -->
<!ELEMENT Correlation (MetadataEntry | Record)*>
<!ATTLIST Correlation
  type          CDATA #REQUIRED
  sourceName    CDATA #REQUIRED
  sourceVersion CDATA #IMPLIED
  device        CDATA #IMPLIED
  creationDate  CDATA #IMPLIED
  startDate     CDATA #REQUIRED
  endDate       CDATA #REQUIRED
>
<!ELEMENT Workout (MetadataEntry | WorkoutEvent | WorkoutStatistics | WorkoutRoute)*>
<!ATTLIST Workout
  workoutActivityType CDATA #REQUIRED
  duration            CDATA #IMPLIED
  durationUnit        CDATA #IMPLIED
  sourceName          CDATA #REQUIRED
  sourceVersion       CDATA #IMPLIED
  device              CDATA #IMPLIED
  creationDate        CDATA #IMPLIED
  startDate           CDATA #REQUIRED
  endDate             CDATA #REQUIRED
>
<!ELEMENT WorkoutEvent (MetadataEntry)*>
<!ATTLIST WorkoutEvent
  type         CDATA #REQUIRED
  date         CDATA #REQUIRED
  duration     CDATA #IMPLIED
  durationUnit CDATA #IMPLIED
>
<!ELEMENT WorkoutStatistics EMPTY>
<!ATTLIST WorkoutStatistics
  type      CDATA #REQUIRED
  startDate CDATA #REQUIRED
  endDate   CDATA #REQUIRED
  average   CDATA #IMPLIED
  minimum   CDATA #IMPLIED
  maximum   CDATA #IMPLIED
  sum       CDATA #IMPLIED
  unit      CDATA #IMPLIED
>
<!ELEMENT WorkoutRoute (MetadataEntry | FileReference)*>
<!ATTLIST WorkoutRoute
  sourceName    CDATA #REQUIRED
  sourceVersion CDATA #IMPLIED
  device        CDATA #IMPLIED
  creationDate  CDATA #IMPLIED
  startDate     CDATA #REQUIRED
  endDate       CDATA #REQUIRED
>
<!ELEMENT FileReference EMPTY>
<!ATTLIST FileReference
  path CDATA #REQUIRED
>
<!ELEMENT ActivitySummary EMPTY>
<!ATTLIST ActivitySummary
  dateComponents         CDATA #IMPLIED
  activeEnergyBurned     CDATA #IMPLIED
  activeEnergyBurnedGoal CDATA #IMPLIED
  activeEnergyBurnedUnit CDATA #IMPLIED
  appleMoveTime          CDATA #IMPLIED
  appleMoveTimeGoal      CDATA #IMPLIED
  appleExerciseTime      CDATA #IMPLIED
  appleExerciseTimeGoal  CDATA #IMPLIED
  appleStandHours        CDATA #IMPLIED
  appleStandHoursGoal    CDATA #IMPLIED
>
<!ELEMENT MetadataEntry EMPTY>
<!ATTLIST MetadataEntry
  key   CDATA #REQUIRED
  value CDATA #REQUIRED
>
<!-- The beats that a variability was measured from. -->
<!ELEMENT HeartRateVariabilityMetadataList (InstantaneousBeatsPerMinute)*>
<!ELEMENT InstantaneousBeatsPerMinute EMPTY>
<!ATTLIST InstantaneousBeatsPerMinute
  bpm  CDATA #REQUIRED
  time CDATA #REQUIRED
>
)";

}  // namespace

std::string prolog(Declarations declarations, const Clock& clock) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<!DOCTYPE HealthData [\n"
                       "<!-- HealthKit Export Version: 14 -->\n";
    if (declarations == Declarations::Full) {
        text += elements;
    }
    text += "]>\n"
            "<HealthData locale=\"en_US\">\n"
            " <ExportDate value=\"";
    DateText(clock).append(text, clock.instantOf(exportTime));
    text +=
        "\"/>\n"
        " <Me HKCharacteristicTypeIdentifierDateOfBirth=\"1984-06-12\""
        " HKCharacteristicTypeIdentifierBiologicalSex=\"HKBiologicalSexNotSet\""
        " HKCharacteristicTypeIdentifierBloodType=\"HKBloodTypeNotSet\""
        " HKCharacteristicTypeIdentifierFitzpatrickSkinType=\"HKFitzpatrickSkinTypeNotSet\"/>\n";
    return text;
}

}  // namespace makeexport
