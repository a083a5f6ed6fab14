#pragma once

#include "import/fast/FastBytes.h"
#include "import/fast/FastRun.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ambulet {

/// Guesses which of the known runs stands at a place, whatever came before, by a few looks at eight
/// bytes in which they differ. In bounded memory and time.
class FastForks {
  public:
    FastForks() : _branches(slotCount) {}

    /// The run that may be at `at`; or one that begins as what is there may begin. Null where there
    /// is none. FastBytes::padding bytes from `at` on can be read.
    FastRun* guess(const char* at) const {
        const Branch* branch = &_trunk;
        while (branch->fork != 0) {
            const Branch& next = _branches[slot(*branch, at)];
            if (next.run == nullptr) {
                break;
            }
            branch = &next;
        }
        return branch->run;
    }

    /// Has `run` guessed from now on where its bytes are, if there is room.
    void add(FastRun& run);

    /// Forgets all runs.
    void clear();

  private:
    static constexpr unsigned slotBits = 12;
    static constexpr std::size_t slotCount = std::size_t{1} << slotBits;
    static constexpr std::size_t mostBranches = slotCount / 2;
    static constexpr std::size_t lookSize = sizeof(std::uint64_t);
    static_assert(FastRun::longest + lookSize <= FastBytes::padding);

    /// The way from a fork on where `bytes` are seen.
    struct Branch {
        std::uint64_t bytes = 0;
        FastRun* run = nullptr;  // that goes this way, the first one if there are more
        std::uint16_t inFork = 0;
        std::uint16_t fork = 0;    // where the runs part, if there are more, else 0
        std::uint16_t offset = 0;  // of the bytes by which they part
    };

    static std::uint64_t look(const Branch& branch, const char* at) {
        return FastBytes::load<std::uint64_t>(at + branch.offset);
    }

    /// The place of the branch that goes on from `branch` where the bytes are those at `at`: it
    /// holds no run where there is no such branch.
    std::size_t slot(const Branch& branch, const char* at) const {
        const std::uint64_t bytes = look(branch, at);
        const std::uint64_t key = bytes ^ (branch.fork * 0xD6E8FEB86659FD93ULL);
        auto slot = static_cast<std::size_t>((key * 0x9E3779B97F4A7C15ULL) >> (64 - slotBits));
        while (_branches[slot].run != nullptr &&
               (_branches[slot].inFork != branch.fork || _branches[slot].bytes != bytes)) {
            slot = (slot + 1) % slotCount;
        }
        return slot;
    }

    Branch* grow(const Branch& from, FastRun& run);

    Branch _trunk;
    std::vector<Branch> _branches;  // open addressing
    std::size_t _branchCount = 0;
    std::uint16_t _forkCount = 0;
};

}  // namespace ambulet
