#include "makeexport/ActivitySummaries.h"

#include "makeexport/Period.h"
#include "makeexport/Text.h"

namespace makeexport {

void appendActivitySummary(std::string& text, std::chrono::local_days day, Random& random) {
    // Every figure has its fixed number of digits.
    text += " <ActivitySummary dateComponents=\"";
    appendDay(text, day);
    text += "\" activeEnergyBurned=\"";
    appendDecimal(text, random.between(100000, 999999), 3);
    text += "\" activeEnergyBurnedGoal=\"450\" activeEnergyBurnedUnit=\"kcal\" appleMoveTime=\"";
    appendNumber(text, random.between(10, 99));
    text += "\" appleMoveTimeGoal=\"0\" appleExerciseTime=\"";
    appendNumber(text, random.between(10, 99));
    text += "\" appleExerciseTimeGoal=\"30\" appleStandHours=\"";
    appendNumber(text, random.between(10, 16));
    text += "\" appleStandHoursGoal=\"12\"/>\n";
}

std::size_t activitySummaryLength() {
    std::string any;
    Random random(0);
    appendActivitySummary(any, firstDay, random);
    return any.size();
}

}  // namespace makeexport
