#pragma once

#include "import/fast/ByteScan.h"
#include "import/fast/NameTable.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <random>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace ambulet {

/// What a piece of markup, well-formed by itself, does where it stands.
class Markup {
  public:
    /// What follows the piece: an attribute's value, or content.
    enum class End : std::uint8_t { value, content };

    std::size_t size = 0;  // in bytes
    End end = End::content;

    /// The piece begins in a tag, and ends it.
    bool endsTag = false;
    bool isEmptyElement = false;  // the tag is one

    /// The piece ends in a tag that it begins: where its "<" stands, and its name.
    bool beginsTag = false;
    std::size_t tagOffset = 0;
    NameTable::Id element = 0;

    /// The attribute whose value follows, and the quote that ends the value.
    NameTable::Id attribute = 0;
    char quote = 0;

    /// The piece has nothing but tags and white space.
    bool isTagsOnly = true;

    /// The elements that the piece closes, the innermost first, and those that it opens then and
    /// leaves open.
    std::span<const NameTable::Id> closed() const { return {_closed.data(), _closedCount}; }
    std::span<const NameTable::Id> opened() const { return {_opened.data(), _openedCount}; }

    bool isFull() const { return _closedCount == most || _openedCount == most; }
    void open(NameTable::Id id) { _opened[_openedCount++] = id; }

    /// False where the element that was opened last has another name.
    bool close(NameTable::Id id) {
        if (_openedCount == 0) {
            _closed[_closedCount++] = id;
            return true;
        }
        return _opened[--_openedCount] == id;
    }

    /// The same elements are open before and after the piece.
    bool keepsDepth() const {
        return endsTag == isEmptyElement && _closedCount == 0 && _openedCount == 0;
    }

  private:
    static constexpr std::size_t most = 8;  // with more, the piece ends

    std::array<NameTable::Id, most> _closed{};
    std::array<NameTable::Id, most> _opened{};
    std::uint8_t _closedCount = 0;
    std::uint8_t _openedCount = 0;
};

struct Piece;

/// A value that was verified after a piece of markup, and the piece that followed it.
class Prediction {
  public:
    /// Of value and piece together, in bytes; longer ones are rare.
    static constexpr std::size_t longest = 512;

    /// Predicts `value`, which `quote` ends, and that `piece` follows.
    void learn(std::string_view value, char quote, Piece& piece);

    /// Predicts nothing.
    void clear() { _blocks.clear(); }

    /// Whether the bytes at `at` are like those that were learnt, and so well-formed. Where they
    /// differ, both must be printable ASCII, and the learnt byte outside a reference.
    template <class Vectors>
    bool holds(const char* at, char quote) const {
        for (const Block& block : _blocks) {
            const ByteScan::Mask differing =
                Vectors::differing(at, block.bytes.data()) & block.compared;
            if (differing != 0 && (differing & (block.fixed | Vectors::special(at, quote))) != 0) {
                return false;
            }
            at += ByteScan::width;
        }
        return !_blocks.empty();
    }

    /// In bytes: of the value, and of value and piece.
    std::size_t valueSize() const { return _valueSize; }
    std::size_t size() const { return _size; }

    Piece& next() const { return *_next; }

  private:
    /// 32 bytes of the value and the piece.
    struct Block {
        std::array<char, ByteScan::width> bytes{};
        ByteScan::Mask compared = 0;  // the bytes that are in use
        ByteScan::Mask fixed = 0;     // those that may not differ
    };

    std::vector<Block> _blocks;
    std::size_t _valueSize = 0;
    std::size_t _size = 0;
    Piece* _next = nullptr;
};

/// A piece of markup: what stands between two values of attributes, with the quotes. It was
/// verified once; where its bytes come again they mean the same, but for the elements that are open
/// there and the attributes that the tag has already.
struct Piece {
    /// In bytes. The pieces of exports have up to 60.
    static constexpr std::size_t longest = 8 * ByteScan::width;

    // What followed it, the latest first. Three, since a phone, a watch and an application may
    // write by turns.
    std::array<Prediction, 3> predictions;
    std::array<Piece*, 2> successors{};
    unsigned misses = 0;         // of the predictions, in close succession; see TagScanner
    std::uint64_t lastMiss = 0;  // the number of its tag

    Markup markup;
    NameSet attributes;  // the one whose value follows
    bool keepsDepth = true;
    NameTable::Id inElement = 0;  // in whose tag it begins
    std::array<char, longest> bytes{};

    void set(const Markup& effect) {
        if (effect.quote != markup.quote) {
            forgetWhatFollowed();  // it was verified in other quotes
        }
        markup = effect;
        keepsDepth = effect.keepsDepth();
        attributes = NameSet(effect.attribute);
    }

    void forgetWhatFollowed() {
        std::ranges::for_each(predictions, &Prediction::clear);
        successors = {};
    }

    /// The prediction that holds at `at`, after the piece; null where none does.
    template <class Vectors>
    const Prediction* predictionAt(const char* at) {
        for (std::size_t rank = 0; rank < predictions.size(); ++rank) {
            if (predictions[rank].template holds<Vectors>(at, markup.quote)) {
                for (; rank > 0; --rank) {
                    std::swap(predictions[rank], predictions[rank - 1]);
                }
                return predictions.data();
            }
        }
        return nullptr;
    }

    /// The successor that stands at `at`; null where none does.
    template <class Vectors>
    Piece* successorAt(const char* at) const {
        for (Piece* const successor : successors) {
            if (successor != nullptr && successor->isAt<Vectors>(at)) {
                return successor;
            }
        }
        return nullptr;
    }

    /// Whether the piece stands at `at`.
    template <class Vectors>
    bool isAt(const char* at) const {
        std::size_t left = markup.size;
        for (const char* from = bytes.data();; at += ByteScan::width, from += ByteScan::width) {
            if ((Vectors::differing(at, from) & ByteScan::firstBytes(left)) != 0) {
                return false;
            }
            if (left <= ByteScan::width) {
                return true;
            }
            left -= ByteScan::width;
        }
    }
};

/// The pieces that come again, in bounded memory: some hundreds. Exports have less than two
/// hundred.
class PieceCache {
  public:
    PieceCache() : _slots(slotCount) {}

    /// The piece at `at`, after a value; null where it is not known.
    template <class Vectors>
    Piece* find(NameTable::Id element, const char* at) const {
        const std::size_t size = sizeAt<Vectors>(at);
        for (std::size_t slot = slotOf(element, at, size), probe = 0; probe < probes;
             ++probe, ++slot) {
            Piece* const piece = _slots[slot % slotCount];
            if (piece != nullptr && piece->inElement == element && piece->markup.size == size &&
                piece->isAt<Vectors>(at)) {
                return piece;
            }
        }
        return nullptr;
    }

    /// Keeps the piece at `at`, which stands after a value and before another. Null where it is not
    /// likely to come again, or there is no room for it.
    Piece* add(NameTable::Id element, const Markup& markup, const char* at) {
        // A quote in a text or a comment would hide the end.
        if (!markup.isTagsOnly || markup.end != Markup::End::value || isFull() ||
            markup.size != sizeAt<ByteScan::Baseline>(at)) {
            return nullptr;
        }
        for (std::size_t slot = slotOf(element, at, markup.size), probe = 0; probe < probes;
             ++probe, ++slot) {
            if (_slots[slot % slotCount] == nullptr) {
                Piece& piece = _pieces.emplace_back();
                piece.set(markup);
                piece.inElement = element;
                std::copy_n(at, markup.size, piece.bytes.data());
                _slots[slot % slotCount] = &piece;
                return &piece;
            }
        }
        return nullptr;
    }

    bool isFull() const { return _pieces.size() == capacity; }

    /// Forgets all pieces. None that was given may be used any more.
    void clear() {
        _pieces.clear();
        std::ranges::fill(_slots, nullptr);
    }

    /// Tries all predictions anew that were given up.
    void retryPredictions() {
        for (Piece& piece : _pieces) {
            piece.misses = 0;
        }
    }

  private:
    static constexpr std::size_t capacity = 512;
    static constexpr std::size_t slotCount = 4 * capacity;  // so that few are taken
    static constexpr std::size_t probes = 4;

    /// Up to, and with, the first quote after the one at `at`; 0 where the longest piece has none.
    template <class Vectors>
    static std::size_t sizeAt(const char* at) {
        ByteScan::Mask first = 1;
        for (std::size_t size = 0; size < Piece::longest; size += ByteScan::width) {
            const ByteScan::Mask quotes =
                (Vectors::equal(at + size, '"') | Vectors::equal(at + size, '\'')) & ~first;
            if (quotes != 0) {
                return size + static_cast<std::size_t>(std::countr_zero(quotes)) + 1;
            }
            first = 0;
        }
        return 0;
    }

    /// Pieces of one size that differ only in the middle share their slots; there are few.
    std::size_t slotOf(NameTable::Id element, const char* at, std::size_t size) const {
        std::array<std::uint64_t, 3> key{element | size << 8U};
        std::memcpy(&key[1], at, std::min<std::size_t>(size, 8));
        std::memcpy(&key[2], at + size - std::min<std::size_t>(size, 8),
                    std::min<std::size_t>(size, 8));
        std::uint64_t number = _salt;
        for (const std::uint64_t part : key) {
            number = (number ^ part) * 0x9E3779B97F4A7C15ULL;
            number ^= number >> 32U;
        }
        return number % slotCount;
    }

    std::uint64_t _salt = std::random_device()();
    std::deque<Piece> _pieces;
    std::vector<Piece*> _slots;
};

}  // namespace ambulet
