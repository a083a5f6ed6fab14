#pragma once

#include "import/fast/FastBytes.h"
#include "import/fast/FastJoining.h"
#include "import/fast/FastMarkup.h"
#include "import/fast/FastNames.h"
#include "import/fast/FastRuns.h"
#include "import/fast/FastValues.h"
#include "import/steps/StepSums.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ambulet {

/// The fast road itself: adds up the step records in bytes in memory, as far as it can be sure that
/// they are well-formed. What it once verified it keeps, for the bytes to come. One thread at a
/// time.
class FastScanner {
  public:
    using Names = std::vector<std::string>;

    FastScanner();

    /// Goes on in the content of an element: of the last of `open`, which are all that are open,
    /// the root first. The root is not left. False where there are too many names.
    bool startIn(const Names& open);

    /// Goes on in the content of an element of which nothing is known.
    void startAnywhere();

    /// Reads on from `begin`, between two pieces of markup, and returns how far it came: to the
    /// last place before `stop` that is between two pieces of markup and before which all is
    /// verified; or to the first such place from `stop` on, if it got there. The step records
    /// before that place are in `sums`. FastBytes::padding null characters come after the last
    /// byte.
    const char* scan(const char* begin, const char* stop);

    /// The elements that were closed since the start and had been open before, the inmost first.
    Names closed() const { return namesOf(_closedBefore); }

    /// The elements that are open and were opened since the start, or named at the start, the
    /// outmost first.
    Names open() const { return namesOf(_open); }

    /// What was added up since it was last taken away.
    StepSums& sums() { return _sums; }

  private:
    struct Text {
        const char* begin = nullptr;
        const char* end = nullptr;
        bool isPlain = true;  // it stands for itself
    };

    struct Attribute {
        bool isWanted = false;      // for the sums
        std::size_t usualSize = 0;  // of the last value, if it was short
    };

    bool readTags(const FastMarkup& begin, const char* at, const char* stop);
    bool accept(const FastRun& run, const char* at);
    bool addAttributes(const FastRun::Part& part);
    bool accept(const FastRun::Part& part, const char* at);
    bool changeDepth(const FastMarkup& markup);
    void follow(FastRun& last, std::string_view value, FastRun& run);
    void join(FastRun& last, std::string_view value, const FastRun& next);
    const char* readValue(FastNames::Id name, char quote, const char* at);
    Text valueInFull(char quote, const char* at);
    void keepWanted(FastNames::Id name, const Text& value);
    bool isStepType(const Text& value) const;
    void addStepRecord();
    Names namesOf(const std::vector<FastNames::Id>& ids) const;

    StepSums _sums;
    FastVocabulary _names;
    FastRuns _runs;
    FastJoining _joining;
    FastValues _values;
    std::uint64_t _tagCount = 0;
    std::array<Attribute, FastNames::most> _attributes;  // by name
    FastNames::Id _recordElement;
    FastNames::Id _typeAttribute;
    FastNames::Id _startDateAttribute;
    FastNames::Id _valueAttribute;

    bool _startedAnywhere = false;
    std::vector<FastNames::Id> _open;
    std::vector<FastNames::Id> _closedBefore;

    const char* _boundary = nullptr;

    // Of the tag being read.
    FastNames::Id _element = 0;
    FastNames::Set _tagAttributes;
    bool _isStepType = false;
    Text _startDate;
    Text _value;
};

}  // namespace ambulet
