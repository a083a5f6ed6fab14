#pragma once

#include "makeexport/Element.h"
#include "makeexport/RecordText.h"
#include "makeexport/StepPlan.h"
#include "makeexport/Timeline.h"

namespace makeexport {

/// The top-level records of a type other than steps. The type and the clock outlive it.
class Records {
  public:
    Records(const RecordType& type, const Clock& clock, Random random);

    void append(Element& element, const Moment& moment);

  private:
    void pickValue();

    const RecordType& _type;
    const Clock& _clock;
    Random _random;
    RecordText _text;
    std::string _value;
};

/// The top-level step records: those of a day add up to what the plan has for it, or to a little
/// more where the day's records are few. The clock and the plan outlive it.
class StepRecords {
  public:
    StepRecords(const StepPlan& plan, const Clock& clock, Random random);

    void append(Element& element, const Moment& moment);

  private:
    std::int64_t pickSteps(const Moment& moment);

    const RecordType& _type;
    const StepPlan& _plan;
    const Clock& _clock;
    Random _random;
    RecordText _text;
    std::chrono::local_days _day;
    std::int64_t _leftOfDay = 0;
    std::string _value;
};

}  // namespace makeexport
