#pragma once

#include "import/fast/FastBytes.h"
#include "import/fast/FastForks.h"
#include "import/fast/FastMarkup.h"
#include "import/fast/FastRun.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

namespace ambulet {

/// The runs that are known, in bounded memory.
class FastRuns {
  public:
    FastRuns();

    /// The longest known run at `at` that ends before or at `stop`, null if there is none. What
    /// usually follows `last`, which may be null, is tried first.
    FastRun* find(const char* at, const char* stop, const FastRun* last) {
        const std::size_t room = at < stop ? static_cast<std::size_t>(stop - at) : 0;
        if (last != nullptr && isLongestAt(last->next, at, room)) {
            return last->next;
        }
        FastRun* const guess = _forks.guess(at);
        return isLongestAt(guess, at, room) ? guess : findOther(at, room, guess);
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

  private:
    struct Slot {
        std::size_t hash = 0;
        FastRun* run = nullptr;
    };

    static bool isLongestAt(const FastRun* run, const char* at, std::size_t room) {
        return run != nullptr && run->longerCount == 0 && run->bytes.size() <= room &&
               FastBytes::equal(at, run->bytes.data(), run->bytes.size());
    }

    FastRun* findOther(const char* at, std::size_t room, FastRun* guess);
    FastRun* root(const char* at, std::size_t room) const;
    FastRun* longer(const FastRun& run, const char* at, std::size_t room) const;
    FastRun& insert(std::size_t hash, FastRun run);

    std::deque<FastRun> _runs;
    std::vector<Slot> _slots;  // open addressing
    FastForks _forks;
    std::size_t _memory = 0;  // in bytes
};

}  // namespace ambulet
