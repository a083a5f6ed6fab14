#include "makeexport/Timeline.h"

#include <algorithm>
#include <utility>

namespace makeexport {

using namespace std::chrono;

Timeline::Timeline(std::vector<local_days> days, std::uint64_t begin, std::uint64_t end)
    : _days(std::move(days)), _begin(begin), _bytes(end - begin) {}

Moment Timeline::at(std::uint64_t place, std::uint64_t size) const {
    // A day's bytes are _bytes / days; times days, all of this is whole numbers.
    const std::uint64_t days = _days.size();
    const std::uint64_t passed = (place - _begin) * days;
    const std::uint64_t ofDay = passed % _bytes;
    const std::uint64_t element = std::max<std::uint64_t>(size * days, 1);
    const std::uint64_t left = (_bytes - ofDay + element / 2) / element;
    return {_days[passed / _bytes], seconds(static_cast<std::int64_t>(ofDay * 86400 / _bytes)),
            static_cast<std::int64_t>(std::max<std::uint64_t>(left, 1))};
}

}  // namespace makeexport
