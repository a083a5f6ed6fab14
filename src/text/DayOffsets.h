#pragma once

#include <chrono>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace ambulet {

/// The offsets of local time from UTC at some instants, recorded by the constructor. If the user
/// changes the system's time zone later, a day that begins at one of these instants stays the same
/// calendar day. A plain value; any thread.
class DayOffsets {
  public:
    /// Records no instants.
    DayOffsets() = default;

    /// `instants`: ascending or descending.
    explicit DayOffsets(std::span<const std::chrono::sys_seconds> instants);

    /// The offset recorded for `instant`. If none is recorded, the one in the current time zone.
    std::chrono::seconds at(std::chrono::sys_seconds instant) const;

  private:
    using Offsets = std::vector<std::pair<std::chrono::sys_seconds, std::chrono::seconds>>;

    std::shared_ptr<const Offsets> _offsets;  // ascending
};

}  // namespace ambulet
