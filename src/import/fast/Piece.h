#pragma once

#include "import/fast/ByteScan.h"
#include "import/fast/NameTable.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <memory>
#include <random>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace ambulet {

/// The effect of a piece of markup that is well-formed by itself.
class Markup {
  public:
    /// What follows the piece: an attribute's value, or content.
    enum class End : std::uint8_t { value, content };

    std::size_t size = 0;  // in bytes
    End end = End::content;

    /// Whether the piece begins inside a tag and ends that tag, and whether that tag is the tag of
    /// an empty element.
    bool endsTag = false;
    bool isEmptyElement = false;

    /// Whether the piece ends inside a tag that it begins; the offset of the "<" of that tag, and
    /// its name.
    bool beginsTag = false;
    std::size_t tagOffset = 0;
    NameTable::Id element = 0;

    /// The attribute whose value follows, and the quote that ends the value.
    NameTable::Id attribute = 0;
    char quote = 0;

    /// Whether the piece consists of tags and white space.
    bool isTagsOnly = true;

    /// Whether the same elements are open before and after the piece.
    bool keepsDepth() const {
        return endsTag == isEmptyElement && _closedCount == 0 && _openedCount == 0;
    }

    /// The elements opened before the piece that it closes, the innermost first; and the elements
    /// that it opens and does not close.
    std::span<const NameTable::Id> closed() const { return {_closed.data(), _closedCount}; }
    std::span<const NameTable::Id> opened() const { return {_opened.data(), _openedCount}; }

    bool isFull() const { return _closedCount == most || _openedCount == most; }
    void open(NameTable::Id id) { _opened[_openedCount++] = id; }

    /// False if the element that was opened last has another name.
    bool close(NameTable::Id id) {
        if (_openedCount == 0) {
            _closed[_closedCount++] = id;
            return true;
        }
        return _opened[--_openedCount] == id;
    }

  private:
    // A piece ends before it would have more. Exports have five levels.
    static constexpr std::size_t most = 8;

    std::array<NameTable::Id, most> _closed{};
    std::array<NameTable::Id, most> _opened{};
    std::uint8_t _closedCount = 0;
    std::uint8_t _openedCount = 0;
};

struct Piece;

/// A value that was verified after a piece of markup, and the piece that followed it.
class Prediction {
  public:
    /// The limit of the bytes of value and piece together. The longest in exports are those of the
    /// attribute device, about 200.
    static constexpr std::size_t mostBytes = 512;

    /// Predicts `value`, and that `piece` follows; together they must not be longer than
    /// `mostBytes`.
    void learn(std::string_view value, Piece& piece);

    /// Whether the bytes at `at` are the learnt ones, or differ from them only in plain characters
    /// of the value. Then they are well-formed, too.
    template <class Vectors>
    bool holds(const char* at) const {
        for (unsigned index = 0; index < _rangeCount; ++index, at += ByteScan::width) {
            if (Vectors::outside(at, _ranges[index].lowest.data(), _ranges[index].spans.data(),
                                 '<' - lowestPlain) != 0) [[unlikely]] {
                return false;
            }
        }
        return _rangeCount != 0;
    }

    /// In bytes: of the value, and of value and piece.
    std::size_t valueSize() const { return _valueSize; }
    std::size_t size() const { return _size; }

    Piece& next() const { return *_next; }

  private:
    /// The bytes that are accepted in 32 positions of value and piece: from `lowest` to `lowest`
    /// plus `spans`. Beyond the end of the piece, all are that XML allows.
    struct alignas(2 * ByteScan::width) Ranges {
        std::array<char, ByteScan::width> lowest;
        std::array<char, ByteScan::width> spans;
    };

    // The plain characters are those from "(" to "~", but "<". That leaves out the quotes and "&".
    static constexpr char lowestPlain = '(';
    static constexpr char highestPlain = '~';

    std::unique_ptr<Ranges[]> _ranges;
    unsigned _rangeCount = 0;
    std::size_t _valueSize = 0;
    std::size_t _size = 0;
    Piece* _next = nullptr;
};

/// A piece of markup: the bytes between two attribute values, including the quotes. It was verified
/// once. Equal bytes later have the same effect, except for two conditions that depend on the
/// position: the open elements, and the attributes that the tag already has.
struct Piece {
    /// The limit of its bytes. The pieces of exports have up to 60.
    static constexpr std::size_t mostBytes = 8 * ByteScan::width;

    // What followed it. Three, because the records of a phone, a watch and an application may
    // alternate. The first was learnt last.
    std::array<Prediction, 3> predictions;
    Piece* successor = nullptr;  // what followed the last value that was not predicted
    unsigned misses = 0;         // of the predictions, in close succession; see TagScanner.cpp
    std::uint64_t lastMiss = 0;  // the number of the tag

    Markup markup;
    NameTable::Id inElement = 0;  // the element in whose tag it begins
    std::array<char, mostBytes> bytes{};

    /// The prediction that holds at `at`, after the piece; null if none does.
    template <class Vectors>
    const Prediction* predictionAt(const char* at) const {
        if (predictions[0].template holds<Vectors>(at)) [[likely]] {
            return &predictions[0];
        }
        for (const Prediction* const other : {&predictions[1], &predictions[2]}) {
            if (other->template holds<Vectors>(at)) {
                return other;
            }
        }
        return nullptr;
    }

    /// Whether the bytes of the piece are at `at`.
    bool isAt(const char* at) const { return std::memcmp(at, bytes.data(), markup.size) == 0; }
};

/// The pieces that are likely to occur again. Its memory is bounded.
class PieceCache {
  public:
    PieceCache() : _groups(capacity) {}

    /// The piece at `at`, after a value; null if it is not in the cache.
    Piece* find(NameTable::Id element, const char* at) const {
        const std::size_t size = sizeAt(at);
        for (Piece* const piece : _groups[groupOf(element, at, size)]) {
            if (piece != nullptr && piece->inElement == element && piece->isAt(at)) {
                return piece;
            }
        }
        return nullptr;
    }

    /// Keeps the piece at `at`, which is between two values. Null if it is not likely to occur
    /// again, or if there is no room for it.
    Piece* add(NameTable::Id element, const Markup& markup, const char* at) {
        // `find` takes the first quote for the end, so there may be no quote in a text or comment.
        if (!markup.isTagsOnly || markup.end != Markup::End::value || isFull() ||
            markup.size != sizeAt(at)) {
            return nullptr;
        }
        Group& group = _groups[groupOf(element, at, markup.size)];
        Piece** const slot = std::ranges::find(group, nullptr);
        if (slot == group.end()) {
            return nullptr;
        }
        Piece& piece = _pieces.emplace_back();
        piece.markup = markup;
        piece.inElement = element;
        std::copy_n(at, markup.size, piece.bytes.data());
        return *slot = &piece;
    }

    bool isFull() const { return _pieces.size() == capacity; }

    /// Removes all pieces. Pointers to them become invalid.
    void clear() {
        _pieces.clear();
        std::ranges::fill(_groups, Group{});
    }

    /// Lets pieces whose predictions missed too often have predictions again.
    void retryPredictions() {
        for (Piece& piece : _pieces) {
            piece.misses = 0;
        }
    }

  private:
    // Exports have less than two hundred pieces. There are `capacity` groups of four pieces; a hash
    // selects the group. For at most four pieces in a thousand, the group is already full.
    static constexpr std::size_t capacity = 512;
    using Group = std::array<Piece*, 4>;

    /// The size of the piece at `at`: up to and including the next quote after the first byte. 0 if
    /// it would be too long.
    static std::size_t sizeAt(const char* at) {
        for (std::size_t size = 1; size < Piece::mostBytes; size += ByteScan::width) {
            if (const ByteScan::Mask quotes = ByteScan::Baseline::quotes(at + size); quotes != 0) {
                size += static_cast<std::size_t>(std::countr_zero(quotes)) + 1;
                return size <= Piece::mostBytes ? size : 0;
            }
        }
        return 0;
    }

    /// Hashes the size and both ends. Pieces that differ only in the middle share a group; there
    /// are few of them.
    std::size_t groupOf(NameTable::Id element, const char* at, std::size_t size) const {
        const std::size_t edge = std::min<std::size_t>(size, 8);
        std::uint64_t first = 0;
        std::uint64_t last = 0;
        std::memcpy(&first, at, edge);
        std::memcpy(&last, at + size - edge, edge);
        // 2 to the 64th divided by the golden ratio: it spreads all bits to the highest.
        constexpr std::uint64_t factor = 0x9E3779B97F4A7C15ULL;
        const std::uint64_t number = (_salt ^ element ^ size << 8U ^ first) * factor;
        return ((number ^ number >> 32U ^ last) * factor >> 32U) * capacity >> 32U;
    }

    std::uint64_t _salt = std::random_device()();  // so that no document can make pieces collide
    std::deque<Piece> _pieces;
    std::vector<Group> _groups;
};

}  // namespace ambulet
