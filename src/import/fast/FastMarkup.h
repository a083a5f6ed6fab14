#pragma once

#include "import/fast/FastNames.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace ambulet {

/// A stretch of markup that has been verified, letter for letter, as far as it can be without
/// knowing which elements are open: what it does to them, and where it leads.
class FastMarkup {
  public:
    enum class End : std::uint8_t { attribute, content };

    std::size_t size = 0;
    End end = End::content;

    /// Of the tag in which the stretch began.
    bool endsTag = false;
    bool isEmptyElement = false;

    /// The tag in which the stretch ends, if it does: where its "<" stands, and its name. Else that
    /// of the tag in which it began goes on.
    bool beginsTag = false;
    std::size_t tagOffset = 0;
    FastNames::Id element = 0;

    /// The attribute after whose opening quote the stretch ends, if it does.
    FastNames::Id attribute = 0;
    char quote = 0;

    /// There is nothing in it but tags and white space.
    bool isTagsOnly = true;

    /// The elements that are closed, from the inmost outwards, and after that those that are opened
    /// and left open.
    std::span<const FastNames::Id> closed() const { return {_closed.data(), _closedCount}; }
    std::span<const FastNames::Id> opened() const { return {_opened.data(), _openedCount}; }

    bool isFull() const { return _closedCount == most || _openedCount == most; }
    void open(FastNames::Id id) { _opened[_openedCount++] = id; }

    /// False where the element that was opened last has another name.
    bool close(FastNames::Id id) {
        if (_openedCount == 0) {
            _closed[_closedCount++] = id;
            return true;
        }
        return _opened[--_openedCount] == id;
    }

  private:
    static constexpr std::size_t most = 8;

    std::array<FastNames::Id, most> _closed{};
    std::array<FastNames::Id, most> _opened{};
    std::uint8_t _closedCount = 0;
    std::uint8_t _openedCount = 0;
};

}  // namespace ambulet
