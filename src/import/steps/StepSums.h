#pragma once

#include "model/DailySteps.h"
#include "text/InstantReader.h"
#include "text/LocalTime.h"

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

namespace ambulet {

/// Sums of steps by the calendar day, in the user's time zone, on which their records start. One
/// thread at a time.
class StepSums {
  public:
    using ByDate = std::map<std::chrono::year_month_day, std::int64_t>;

    /// Adds the number at the start of `value`, or 0 if there is none, to the day of `startDate`.
    /// Does nothing if InstantReader cannot parse `startDate`. Sums wrap around at the ends of the
    /// signed 64-bit range.
    void add(std::string_view startDate, std::string_view value);

    /// Adds sums that `takeAll` returned.
    void add(ByDate days);

    /// The sums of all days to which something was added.
    const ByDate& byDate() const { return _sums; }

    /// Replaces all sums.
    void set(ByDate days);

    /// Removes all sums and returns them.
    ByDate takeAll();

    /// The days to which something was added, newest first. A day whose midnight the clock skipped
    /// is left out, because `startOfDay` has no instant for it.
    std::vector<DailySteps> days() const;

  private:
    std::int64_t& sum(std::chrono::sys_seconds instant);

    InstantReader _instants;
    ByDate _sums;

    // A direct-mapped cache of days. Without it, each record would need a call of the C library for
    // its day and a search of the map for its sum. The cache has entries for 4096 days (eleven
    // years), because some exports are not sorted by time. `sum` is valid if `generation` equals
    // `_generation`, which set and takeAll increment.
    struct KnownDay {
        LocalDay day;
        std::uint64_t generation = 0;
        std::int64_t* sum = nullptr;
    };
    std::vector<KnownDay> _knownDays = std::vector<KnownDay>(4096);
    KnownDay* _last = nullptr;
    std::uint64_t _generation = 1;
};

}  // namespace ambulet
