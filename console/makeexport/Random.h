#pragma once

#include <cstdint>

namespace makeexport {

/// A stream of random numbers that is the same on every machine and with every standard library,
/// whose own distributions differ: SplitMix64. A plain value; a copy goes on from the same place.
class Random {
  public:
    explicit Random(std::uint64_t seed) : _state(seed) {}

    /// The stream with number `index` of `seed`: the streams of a seed know nothing of each other,
    /// so that what one part of an export draws leaves the others as they are.
    static Random stream(std::uint64_t seed, std::uint64_t index) {
        return Random(Random(seed).next() ^ Random(~index).next());
    }

    std::uint64_t next() {
        std::uint64_t z = _state += 0x9e3779b97f4a7c15U;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
        return z ^ (z >> 31);
    }

    /// From 0 up to, but without, `limit`.
    std::uint32_t below(std::uint32_t limit) {
        return static_cast<std::uint32_t>(((next() >> 32) * limit) >> 32);
    }

    /// Both ends included; `high` is not below `low`.
    int between(int low, int high) {
        return low + static_cast<int>(below(static_cast<std::uint32_t>(high - low) + 1));
    }

    bool oneIn(std::uint32_t number) { return below(number) == 0; }

    /// One of the elements of a container that has some.
    template <class Container>
    const auto& oneOf(const Container& container) {
        return container[below(static_cast<std::uint32_t>(container.size()))];
    }

  private:
    std::uint64_t _state;
};

}  // namespace makeexport
