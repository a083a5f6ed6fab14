#pragma once

#include "import/fast/FastBytes.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ambulet {

/// Values of attributes that were verified before, in bounded memory: a thousand at most, of those
/// that were met last.
class FastValues {
  public:
    FastValues() : _slots(slotCount) {}

    /// The size of the value at `at`, which `quote` ends, if it is known; else 0.
    std::size_t sizeAt(char quote, const char* at) const;

    /// Keeps a value, with the closing quote at its end, if it is not too long.
    void keep(std::string_view bytes);

  private:
    static constexpr std::size_t slotCount = 1024;
    static constexpr std::size_t longest = 1000;
    static_assert(longest <= FastBytes::padding);

    static std::size_t slot(const char* at, std::size_t size);

    std::vector<std::string> _slots;
};

}  // namespace ambulet
