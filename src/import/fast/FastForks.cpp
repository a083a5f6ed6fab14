#include "import/fast/FastForks.h"

#include <algorithm>

namespace ambulet {

// A tree of decisions. A fork is made where two runs that are guessed at the same place differ
// first. A run that comes later takes the branch of its own bytes there, or makes one; whether it
// differed from the others before that does not matter. Only a run that is too short for the look
// gets a fork of its own before: what would have gone another way from there is added again.

void FastForks::add(FastRun& run) {
    constexpr int mostForks = 8;  // on the way to a run
    if (_trunk.run == nullptr) {
        _trunk.run = &run;
        return;
    }
    Branch* branch = &_trunk;
    int forks = 0;
    for (; branch->fork != 0 && branch->offset + lookSize <= run.bytes.size(); ++forks) {
        Branch& next = _branches[slot(*branch, run.bytes.data())];
        if (next.run == nullptr) {
            grow(*branch, run);
            return;
        }
        branch = &next;
    }
    FastRun& other = *branch->run;
    const std::size_t size = std::min(run.bytes.size(), other.bytes.size());
    const std::size_t same = FastBytes::commonLength(run.bytes.data(), other.bytes.data(), size);
    if (same == size) {
        if (branch->fork == 0 && run.bytes.size() > size) {
            branch->run = &run;
        }
    } else if (size >= lookSize && forks < mostForks && _branchCount + 2 <= mostBranches) {
        const Branch onwards = *branch;
        branch->fork = ++_forkCount;
        branch->offset = static_cast<std::uint16_t>(std::min(same, size - lookSize));
        Branch* const old = grow(*branch, other);
        old->fork = onwards.fork;
        old->offset = onwards.offset;
        grow(*branch, run);
    }
}

/// The new branch that `run` goes from `from` on; null if there is no room for it.
FastForks::Branch* FastForks::grow(const Branch& from, FastRun& run) {
    if (_branchCount == mostBranches) {
        return nullptr;
    }
    ++_branchCount;
    Branch& branch = _branches[slot(from, run.bytes.data())];
    branch.bytes = look(from, run.bytes.data());
    branch.inFork = from.fork;
    branch.run = &run;
    return &branch;
}

void FastForks::clear() {
    std::ranges::fill(_branches, Branch());
    _trunk = {};
    _branchCount = 0;
    _forkCount = 0;
}

}  // namespace ambulet
