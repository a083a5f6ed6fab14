#include "text/DayOffsets.h"

#include "text/LocalTime.h"

#include <algorithm>

namespace ambulet {

DayOffsets::DayOffsets(std::span<const std::chrono::sys_seconds> instants) {
    Offsets offsets;
    offsets.reserve(instants.size());
    for (const auto instant : instants) {
        offsets.emplace_back(instant, offsetFromUtc(instant));
    }
    if (!std::ranges::is_sorted(offsets)) {
        std::ranges::reverse(offsets);
    }
    _offsets = std::make_shared<const Offsets>(std::move(offsets));
}

std::chrono::seconds DayOffsets::at(std::chrono::sys_seconds instant) const {
    if (_offsets) {
        const auto found =
            std::ranges::lower_bound(*_offsets, instant, {}, &Offsets::value_type::first);
        if (found != _offsets->end() && found->first == instant) {
            return found->second;
        }
    }
    return offsetFromUtc(instant);
}

}  // namespace ambulet
