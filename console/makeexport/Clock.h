#pragma once

#include "makeexport/Random.h"
#include "makeexport/Zone.h"

#include <chrono>
#include <string>
#include <vector>

namespace makeexport {

/// The clock that the person carries: it follows the daylight saving of the home zone, and that of
/// other zones on two trips a year. It knows the time from `periodBegin` to `periodEnd`.
class Clock {
  public:
    /// A time in which the clock's offset stays the same: `from` ≤ t < `until`.
    struct Stretch {
        std::chrono::sys_seconds from;
        std::chrono::sys_seconds until;
        std::chrono::seconds offset;
        const Zone* zone;  // never null
    };

    /// `random` decides the trips.
    explicit Clock(Random random);

    const Stretch& stretchAt(std::chrono::sys_seconds instant) const;

    /// The instant at which the clock shows `local`. Of two, either one; where it never shows it,
    /// one that is no farther off than the clock was moved.
    std::chrono::sys_seconds instantOf(std::chrono::local_seconds local) const;

    /// In order, without gaps.
    const std::vector<Stretch>& stretches() const { return _stretches; }

  private:
    void live(const Zone& zone, std::chrono::sys_seconds from, std::chrono::sys_seconds until);

    std::vector<Stretch> _stretches;
};

/// Writes instants as an export has them, "2024-03-09 07:15:02 -0800". It remembers the day last
/// written, since the dates of an export come in runs of a day. The clock outlives it.
class DateText {
  public:
    explicit DateText(const Clock& clock) : _clock(clock) {}

    void append(std::string& text, std::chrono::sys_seconds instant);

  private:
    void remember(std::chrono::sys_seconds instant);

    const Clock& _clock;
    std::chrono::sys_seconds _midnight;  // may lie before _from, where the offset has changed
    std::chrono::sys_seconds _from;      // _text is right for _from ≤ t < _until
    std::chrono::sys_seconds _until;
    std::string _text;
};

}  // namespace makeexport
