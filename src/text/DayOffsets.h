#pragma once

#include <chrono>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace ambulet {

/// The offsets of local time from UTC at some instants, as they were when this was made. The user
/// may change the system's time zone later; a day that begins at one of the instants stays the same
/// calendar day. A plain value; any thread.
class DayOffsets {
  public:
    /// Of no instants.
    DayOffsets() = default;

    /// `instants`: ascending or descending.
    explicit DayOffsets(std::span<const std::chrono::sys_seconds> instants);

    /// The offset at one of the instants; at any other, the offset in the time zone of now.
    std::chrono::seconds at(std::chrono::sys_seconds instant) const;

  private:
    using Offsets = std::vector<std::pair<std::chrono::sys_seconds, std::chrono::seconds>>;

    std::shared_ptr<const Offsets> _offsets;  // ascending
};

}  // namespace ambulet
