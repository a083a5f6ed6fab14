#pragma once

#include "makeexport/Element.h"
#include "makeexport/RecordText.h"
#include "makeexport/Timeline.h"

namespace makeexport {

/// Workouts with their events, statistics and routes. Some have a statistic of steps, which is no
/// Record. None is longer than `longestWorkout` bytes. The clock outlives it.
class Workouts {
  public:
    Workouts(const Clock& clock, Random random) : _clock(clock), _dates(clock), _random(random) {}

    void append(Element& element, const Moment& moment);

  private:
    void appendEvents(std::string& text, const Times& times);
    void appendStatistics(std::string& text, std::string_view type, const Times& times,
                          std::string_view figures, std::string_view unit);
    void appendRoute(std::string& text, const Source& source, const Times& times);

    const Clock& _clock;
    DateText _dates;
    Random _random;
};

inline constexpr std::size_t longestWorkout = 6000;

}  // namespace makeexport
