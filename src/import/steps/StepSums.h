#pragma once

#include "model/DailySteps.h"
#include "text/InstantReader.h"
#include "text/LocalTime.h"

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

namespace ambulet {

/// Step counts summed by the calendar day, in the user's time zone, on which they start. One thread
/// at a time.
class StepSums {
  public:
    using ByDate = std::map<std::chrono::year_month_day, std::int64_t>;

    /// Adds the steps that the text `value` holds, 0 where it holds no number, to the day of
    /// `startDate`. Where `startDate` is not of the form "yyyy-MM-dd HH:mm:ss Z" nothing is added.
    /// Sums wrap around at the ends of the signed 64-bit range.
    void add(std::string_view startDate, std::string_view value);

    /// Adds the steps of days, as `takeAll` gave them.
    void add(ByDate days);

    /// Takes all sums out of this one: that of each day to which anything was added.
    ByDate takeAll();

    /// The days to which anything was added, newest first. A day whose midnight the clock skipped
    /// has no instant to begin at and is left out.
    std::vector<DailySteps> days() const;

  private:
    std::int64_t& sum(std::chrono::sys_seconds instant);

    InstantReader _instants;
    ByDate _sums;

    // A direct-mapped cache of days: finding the day of an instant takes a call of the system's,
    // and its sum a search of the map. It holds eleven years, since not all exports are in order of
    // time. `taken` is the generation of `sum`: takeAll begins a new one.
    struct KnownDay {
        LocalDay day;
        std::uint64_t taken = 0;
        std::int64_t* sum = nullptr;
    };
    std::vector<KnownDay> _knownDays = std::vector<KnownDay>(4096);
    KnownDay* _last = nullptr;
    std::uint64_t _taken = 1;
};

}  // namespace ambulet
