#pragma once

#include <cstdint>

namespace makeexport {

/// Random numbers (SplitMix64) that are the same on every machine and with every standard library,
/// unlike the standard distributions.
class Random {
  public:
    explicit Random(std::uint64_t seed) : _state(seed) {}

    std::uint64_t next() {
        std::uint64_t z = _state += 0x9e3779b97f4a7c15U;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
        return z ^ (z >> 31);
    }

    /// From 0 to `limit` - 1.
    std::uint32_t below(std::uint32_t limit) {
        return static_cast<std::uint32_t>(((next() >> 32) * limit) >> 32);
    }

    /// From `low` to `high`, both included.
    int between(int low, int high) {
        return low + static_cast<int>(below(static_cast<std::uint32_t>(high - low) + 1));
    }

    bool oneIn(std::uint32_t number) { return below(number) == 0; }

    /// A random element. The container must not be empty.
    template <class Container>
    const auto& oneOf(const Container& container) {
        return container[below(static_cast<std::uint32_t>(container.size()))];
    }

  private:
    std::uint64_t _state;
};

}  // namespace makeexport
