#pragma once

#include "makeexport/Element.h"
#include "makeexport/RecordText.h"
#include "makeexport/Timeline.h"

#include <vector>

namespace makeexport {

/// Correlations: blood pressures and meals, with their Records inside, and a few that hold a step
/// record which stands at top level too. The clock outlives it.
class Correlations {
  public:
    /// `stepRecords`: those to repeat, in the order of their start.
    Correlations(std::vector<Element> stepRecords, const Clock& clock, Random random);

    void append(Element& element, const Moment& moment);

  private:
    void open(Element& element, std::string_view type, const Source& source, const Times& times);
    void appendPressure(Element& element, const Source& source, const Times& times);
    void appendMeal(Element& element, const Source& source, const Times& times);

    std::vector<Element> _stepRecords;
    std::size_t _repeated = 0;
    const Clock& _clock;
    DateText _dates;
    Random _random;
    RecordText _systolic;
    RecordText _diastolic;
    RecordText _water;
};

}  // namespace makeexport
