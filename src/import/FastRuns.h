#pragma once

#include "import/FastBytes.h"
#include "import/FastMarkup.h"
#include "import/FastNames.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

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

    std::string bytes;
    std::vector<Part> parts;
    bool isInOneTag = false;
    FastNames::Id attribute = 0;  // after whose opening quote it ends
    char quote = 0;

    FastRun* shorter = nullptr;  // the one that was made longer to get this one
    FastRun* longest = nullptr;  // of those made from this one, directly or not, the last one met

    // What followed last after the value at the end, and the last other one before that.
    FastRun* next = nullptr;
    FastRun* otherNext = nullptr;

    std::uint32_t longerCount = 0;

    const FastRun& root() const { return shorter == nullptr ? *this : shorter->root(); }
};

/// The runs that are known, in bounded memory.
class FastRuns {
  public:
    FastRuns();

    /// The longest known run at `at` that ends before or at `stop`, null if there is none. What
    /// followed `last` is tried first; it may be null.
    FastRun* find(const char* at, const char* stop, FastRun* last) {
        const std::size_t room = at < stop ? static_cast<std::size_t>(stop - at) : 0;
        if (last != nullptr && isLongestAt(last->next, at, room)) {
            return last->next;
        }
        if (last != nullptr && isLongestAt(last->otherNext, at, room)) {
            return last->otherNext;
        }
        return findOther(at, room, last == nullptr ? nullptr : last->next);
    }

    /// Keeps the markup at `at` as a run. Null where it is none that comes again, or there is no
    /// room for it.
    FastRun* add(const FastMarkup& markup, const char* at);

    /// Keeps the run that is made of `run`, the value after it and `next`, if there is room.
    void join(FastRun& run, std::string_view value, bool isStepType, const FastRun& next);

    /// Forgets all. No run that was given before may be used any more.
    void clear();

    /// There is no room for more.
    bool isFull() const;

    /// How often what followed was not what had followed last.
    std::uint64_t surprises() const { return _surprises; }

  private:
    struct Slot {
        std::size_t hash = 0;
        FastRun* run = nullptr;
    };

    static bool isLongestAt(const FastRun* run, const char* at, std::size_t room) {
        return run != nullptr && run->longerCount == 0 && run->bytes.size() <= room &&
               FastBytes::equal(at, run->bytes.data(), run->bytes.size());
    }

    FastRun* findOther(const char* at, std::size_t room, FastRun* likely);
    FastRun* root(const char* at, std::size_t room) const;
    FastRun* longer(const FastRun& run, const char* at, std::size_t room) const;
    FastRun& insert(std::size_t hash, FastRun run);

    std::deque<FastRun> _runs;
    std::vector<Slot> _slots;  // open addressing
    std::size_t _byteCount = 0;
    std::uint64_t _surprises = 0;
};
