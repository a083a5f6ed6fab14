#pragma once

#include "import/fast/FastNames.h"

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ambulet {

/// Judges where it pays to make runs longer: not by values of an attribute that varies, and not
/// while what comes is so often new that learning it never ends.
class FastJoining {
  public:
    /// Whether runs are to be made longer by values of the attribute.
    bool pays(FastNames::Id attribute) const { return _isOn && !_attributes[attribute].varies; }

    /// It never pays for the attribute.
    void setVaries(FastNames::Id attribute) { _attributes[attribute].varies = true; }

    /// Takes note that a run was made longer by the value, which now has so many longer ones.
    void note(FastNames::Id attribute, std::string_view value, std::size_t longerCount);

    /// Judges, after so many tags in all. Returns whether the runs had better be learnt anew.
    bool judge(std::uint64_t tagCount);

  private:
    struct Attribute {
        bool varies = false;
        std::bitset<4096> values;  // by their hashes
        unsigned count = 0;
        unsigned newCount = 0;  // among the last ones

        bool isMostlyNew(std::string_view value);
    };

    static constexpr int lessonCount = 3;
    static constexpr std::uint64_t lesson = 4000;

    bool _isOn = true;
    bool _isOver = false;           // what was learnt is of no use any more
    int _lessons = lessonCount;     // in which much may be new
    std::uint64_t _madeLonger = 0;  // since it was judged last
    std::uint64_t _lastJudgement = 0;
    std::uint64_t _nextJudgement = lesson;
    std::uint64_t _rest = 8000;
    std::array<Attribute, FastNames::most> _attributes;  // by name
};

}  // namespace ambulet
