#include "import/fast/FastRuns.h"

#include "import/fast/FastBytes.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <utility>

namespace ambulet {

// The runs are the nodes of trees. A run of one stretch of markup is a root; it begins with the
// closing quote of a value and ends with the next quote after that, or it is not kept (a quote may
// stand in text), so its bytes alone say how long it is. Each other run begins with the bytes of
// `shorter`; among the runs made longer from the same one it is looked for by the value that comes
// next.

namespace {

constexpr std::size_t mostRuns = 4096;
constexpr std::size_t mostMemory = std::size_t{1536} * 1024;
constexpr std::size_t slotCount = 2 * mostRuns;
constexpr std::size_t longestMarkup = 256;
static_assert(FastRun::longest <= FastBytes::padding && longestMarkup <= FastBytes::padding);

/// The length up to, and with, the next quote after the first byte; 0 if it is beyond the longest.
std::size_t lengthToQuote(const char* at) {
    const std::size_t length = 1 + FastBytes::lengthToQuote(at + 1, longestMarkup);
    return length < longestMarkup ? length + 1 : 0;
}

/// Of the run that goes on from `run` with the value at `at`.
std::size_t hashOf(const FastRun& run, const char* at, std::size_t size) {
    return FastBytes::hash(at, size) ^ std::hash<const FastRun*>()(&run);
}

/// What a run takes, in bytes, with about what the system needs for its blocks.
std::size_t memoryOf(const FastRun& run) {
    constexpr std::size_t overhead = 64;
    return sizeof(FastRun) + run.bytes.capacity() + run.parts.capacity() * sizeof(FastRun::Part) +
           overhead;
}

/// The longest of `run` and those that it was made from that is at `at` and has no more than `room`
/// bytes.
FastRun* longestAt(FastRun* run, const char* at, std::size_t room) {
    const std::size_t size = std::min(run->bytes.size(), room);
    const std::size_t same = FastBytes::commonLength(at, run->bytes.data(), size);
    while (run != nullptr && run->bytes.size() > same) {
        run = run->shorter;
    }
    return run;
}

}  // namespace

FastRuns::FastRuns() : _slots(slotCount) {}

FastRun* FastRuns::findOther(const char* at, std::size_t room, FastRun* guess) {
    FastRun* run = guess == nullptr ? nullptr : longestAt(guess, at, room);
    if (run == nullptr) {
        run = root(at, room);
    }
    if (run == nullptr) {
        return nullptr;
    }
    while (FastRun* const longer = this->longer(*run, at, room)) {
        run = longer;
    }
    _forks.add(*run);
    return run;
}

/// The run of one stretch of markup at `at`.
FastRun* FastRuns::root(const char* at, std::size_t room) const {
    const std::size_t size = lengthToQuote(at);
    if (size == 0 || size > room) {
        return nullptr;
    }
    const std::size_t hash = FastBytes::hash(at, size);
    for (std::size_t slot = hash % slotCount; _slots[slot].run != nullptr;
         slot = (slot + 1) % slotCount) {
        const FastRun& run = *_slots[slot].run;
        if (_slots[slot].hash == hash && run.shorter == nullptr && run.bytes.size() == size &&
            FastBytes::equal(at, run.bytes.data(), size)) {
            return _slots[slot].run;
        }
    }
    return nullptr;
}

/// The run made from `run`, which is at `at`, that is there too.
FastRun* FastRuns::longer(const FastRun& run, const char* at, std::size_t room) const {
    if (run.longerCount == 0) {
        return nullptr;
    }
    const std::size_t size = run.bytes.size();
    const char* const value = at + size;
    const std::size_t most = std::min(room, FastRun::longest) - size;
    const auto* end = static_cast<const char*>(std::memchr(value, run.quote, most));
    if (end == nullptr) {
        return nullptr;
    }
    const std::size_t hash = hashOf(run, value, static_cast<std::size_t>(end - value));
    for (std::size_t slot = hash % slotCount; _slots[slot].run != nullptr;
         slot = (slot + 1) % slotCount) {
        const FastRun& longer = *_slots[slot].run;
        const std::size_t more = longer.bytes.size() - size;
        if (_slots[slot].hash == hash && longer.shorter == &run && longer.bytes.size() <= room &&
            FastBytes::equal(value, longer.bytes.data() + size, more)) {
            return _slots[slot].run;
        }
    }
    return nullptr;
}

FastRun* FastRuns::add(const FastMarkup& markup, const char* at) {
    if (isFull() || !markup.isTagsOnly || markup.end != FastMarkup::End::attribute ||
        lengthToQuote(at) != markup.size) {
        return nullptr;
    }
    FastRun run;
    run.bytes.assign(at, markup.size);
    run.parts.emplace_back(markup);
    run.attribute = markup.attribute;
    run.quote = markup.quote;
    return &insert(FastBytes::hash(at, markup.size), std::move(run));
}

void FastRuns::join(FastRun& run, std::string_view value, bool isStepType, const FastRun& next) {
    const std::size_t offset = run.bytes.size() + value.size();
    if (isFull() || offset + next.bytes.size() > FastRun::longest) {
        return;
    }
    FastRun joined;
    joined.bytes.reserve(offset + next.bytes.size());
    joined.bytes.append(run.bytes).append(value).append(next.bytes);
    joined.parts.reserve(run.parts.size() + next.parts.size());
    joined.parts = run.parts;
    joined.parts.back().isStepType |= isStepType;
    for (FastRun::Part part : next.parts) {
        part.offset += offset;
        if (part.markup.endsTag) {
            joined.parts.push_back(part);
        } else {
            joined.parts.back().attributes.add(part.attributes);
            joined.parts.back().isStepType |= part.isStepType;
        }
    }
    joined.attribute = next.attribute;
    joined.quote = next.quote;
    joined.shorter = &run;
    ++run.longerCount;
    insert(hashOf(run, value.data(), value.size()), std::move(joined));
}

FastRun& FastRuns::insert(std::size_t hash, FastRun run) {
    _memory += memoryOf(run);
    FastRun& kept = _runs.emplace_back(std::move(run));
    kept.isInOneTag = !kept.parts.back().markup.endsTag;
    std::size_t slot = hash % slotCount;
    while (_slots[slot].run != nullptr) {
        slot = (slot + 1) % slotCount;
    }
    _slots[slot] = {hash, &kept};
    return kept;
}

bool FastRuns::isFull() const {
    return _runs.size() == mostRuns || _memory >= mostMemory;
}

void FastRuns::clear() {
    _runs.clear();
    std::ranges::fill(_slots, Slot());
    _forks.clear();
    _memory = 0;
}

}  // namespace ambulet
