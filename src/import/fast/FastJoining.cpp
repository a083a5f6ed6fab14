#include "import/fast/FastJoining.h"

#include "import/fast/FastBytes.h"

#include <algorithm>
#include <utility>

namespace ambulet {

// At first all is new, so it takes a few lessons before it is judged. Where it does not pay it is
// tried again later, and ever more seldom.

void FastJoining::note(FastNames::Id attribute, std::string_view value, std::size_t longerCount) {
    constexpr std::size_t mostLonger = 512;
    ++_madeLonger;
    if (longerCount >= mostLonger || _attributes[attribute].isMostlyNew(value)) {
        setVaries(attribute);
        _isOver = true;
        _lessons = lessonCount;
    }
}

/// Whether most of the values lately were others than all before; false between samples.
bool FastJoining::Attribute::isMostlyNew(std::string_view value) {
    constexpr unsigned sample = 128;
    const std::size_t place = FastBytes::hash(value.data(), value.size()) % values.size();
    newCount += values[place] ? 0U : 1U;
    values[place] = true;
    return ++count % sample == 0 && 4 * std::exchange(newCount, 0) > 3 * sample;
}

bool FastJoining::judge(std::uint64_t tagCount) {
    constexpr std::uint64_t longestRest = std::uint64_t{1} << 20U;
    if (tagCount >= _nextJudgement) {
        const bool isOftenNew = 8 * std::exchange(_madeLonger, 0) > tagCount - _lastJudgement;
        if (!_isOn) {
            _isOn = true;
            _lessons = lessonCount;
        } else if (_lessons > 0) {
            --_lessons;
        }
        if (_lessons == 0 && isOftenNew) {
            _isOn = false;
            _isOver = true;
            _rest = std::min(2 * _rest, longestRest);
        }
        _lastJudgement = tagCount;
        _nextJudgement = tagCount + (_isOn ? lesson : _rest);
    }
    return std::exchange(_isOver, false);
}

}  // namespace ambulet
