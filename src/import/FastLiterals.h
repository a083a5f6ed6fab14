#pragma once

#include "import/FastBytes.h"
#include "import/FastMarkup.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// The stretches of markup between two values that were met before. Their bytes mean the same
/// wherever they follow a value, so equal bytes need not be verified again.
class FastLiterals {
  public:
    struct Literal {
        FastMarkup markup;
        std::string bytes;

        /// What followed last time: most likely what follows next. May be null.
        Literal* next = nullptr;

        bool isAt(const char* at) const { return FastBytes::equal(at, bytes.data(), markup.size); }
    };

    FastLiterals() : _slots(slotCount) {}

    /// The literal that begins at `at`, null if it is not known.
    Literal* find(const char* at) const;

    /// Keeps the literal of `markup` at `at`, if it is one to come again and there is room for it.
    Literal* add(const FastMarkup& markup, const char* at);

  private:
    static constexpr std::size_t slotCount = 2048;
    static constexpr std::size_t most = slotCount / 2;
    static constexpr std::size_t longest = 256;

    static std::size_t slot(const char* at, std::size_t size);

    std::vector<std::unique_ptr<Literal>> _slots;  // open addressing
    std::size_t _count = 0;
};
