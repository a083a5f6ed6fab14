#include "makeexport/Clock.h"

#include "makeexport/Period.h"
#include "makeexport/Text.h"

#include <algorithm>

namespace makeexport {

using namespace std::chrono;

Clock::Clock(Random random) {
    constexpr days betweenTrips(182);
    sys_seconds home = periodBegin;
    for (sys_days half = periodBegin; half + betweenTrips < periodEnd; half += betweenTrips) {
        const sys_seconds departure = half + days(random.between(10, 150)) +
                                      hours(random.between(0, 23)) + minutes(random.between(0, 59));
        const sys_seconds returning = departure + days(random.between(3, 18));
        const Zone& abroad = random.oneOf(foreignZones());
        live(homeZone(), home, departure);
        live(abroad, departure, returning);
        home = returning;
    }
    live(homeZone(), home, periodEnd);
}

void Clock::live(const Zone& zone, sys_seconds from, sys_seconds until) {
    for (const OffsetChange& change : zone.offsets(from, until)) {
        if (change.at != from) {
            _stretches.back().until = change.at;
        }
        _stretches.push_back({change.at, until, change.offset, &zone});
    }
}

const Clock::Stretch& Clock::stretchAt(sys_seconds instant) const {
    const auto next = std::ranges::upper_bound(_stretches, instant, {}, &Stretch::from);
    return next == _stretches.begin() ? *next : *std::prev(next);
}

sys_seconds Clock::instantOf(local_seconds local) const {
    const sys_seconds asIfUtc(local.time_since_epoch());
    const seconds near = stretchAt(asIfUtc).offset;
    return asIfUtc - stretchAt(asIfUtc - near).offset;
}

void DateText::append(std::string& text, sys_seconds instant) {
    if (instant < _from || instant >= _until) {
        remember(instant);
    }
    const auto ofDay = static_cast<unsigned>((instant - _midnight).count());
    putTwoDigits(&_text[11], ofDay / 3600);
    putTwoDigits(&_text[14], ofDay / 60 % 60);
    putTwoDigits(&_text[17], ofDay % 60);
    text += _text;
}

void DateText::remember(sys_seconds instant) {
    const Clock::Stretch& stretch = _clock.stretchAt(instant);
    const local_days day =
        floor<days>(local_seconds((instant + stretch.offset).time_since_epoch()));
    _midnight = sys_seconds(day.time_since_epoch()) - stretch.offset;
    _from = std::max(_midnight, stretch.from);
    _until = std::min(_midnight + days(1), stretch.until);

    _text.clear();
    appendDay(_text, day);
    _text += " hh:mm:ss ";
    const auto offset = duration_cast<minutes>(stretch.offset).count();
    const auto size = static_cast<unsigned>(offset < 0 ? -offset : offset);
    _text += offset < 0 ? '-' : '+';
    appendTwoDigits(_text, size / 60);
    appendTwoDigits(_text, size % 60);
}

}  // namespace makeexport
