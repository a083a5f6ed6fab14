#pragma once

#include "import/fast/FastMarkup.h"
#include "import/fast/FastNames.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace ambulet {

/// Bytes that were verified before and come again, from the closing quote of one value up to and
/// with the opening quote of another: a stretch of markup, or several with the values between them.
/// Their bytes mean the same wherever they follow a value, but for the elements that are open and
/// the attributes that the tag has already.
struct FastRun {
    /// What stands in one tag. A run begins with what is left of the tag in which it begins.
    struct Part {
        explicit Part(const FastMarkup& begin)
            : markup(begin), attributes(begin.attribute),
              keepsDepth((!begin.endsTag || begin.isEmptyElement) && begin.closed().empty() &&
                         begin.opened().empty()) {}

        std::size_t offset = 0;  // of the markup in the run
        FastMarkup markup;       // up to the first of the attributes
        FastNames::Set attributes;
        bool keepsDepth;          // the same elements are open after it
        bool isStepType = false;  // the type among the attributes is that of step records
    };

    static constexpr std::size_t longest = 1000;

    std::string bytes;
    std::vector<Part> parts;
    bool isInOneTag = false;
    FastNames::Id attribute = 0;  // after whose opening quote it ends
    char quote = 0;

    FastRun* shorter = nullptr;  // the one that was made longer to get this one
    std::uint32_t longerCount = 0;

    // What followed last after the value at the end; and what did so twice in succession.
    FastRun* recent = nullptr;
    FastRun* next = nullptr;

    const FastRun& root() const { return shorter == nullptr ? *this : shorter->root(); }
};

}  // namespace ambulet
