#pragma once

#include "import/fast/NameTable.h"
#include "import/fast/Piece.h"
#include "import/steps/StepSums.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ambulet {

/// Adds up the step records in bytes in memory, as far as it has verified that the bytes are
/// well-formed. It keeps the markup that it has verified, and compares bytes to come with that. One
/// thread at a time.
///
/// A boundary is a place in the content of an element between two tokens: tags, comments,
/// processing instructions, CDATA sections and texts.
class TagScanner {
  public:
    using ElementNames = std::vector<std::string>;

    /// So many null characters must follow the last byte: comparisons reach beyond it.
    static constexpr std::size_t padding = Prediction::mostBytes + 2 * ByteScan::width;

    /// The elements that may be open, and that a scan may close of those before it. Exports have
    /// five levels.
    static constexpr std::size_t deepest = 100;

    /// A tag that is longer, in bytes, is a long one. Those of exports are far below; and expat
    /// keeps less than half a megabyte of any number of tags up to this (see ExportReader.cpp).
    static constexpr std::size_t longTag = 8191;

    TagScanner();

    /// Goes on in the content of an element: the last of `open`, which are all open elements, the
    /// root first. The root is not left. Long tags that have more than `mostLongTagBytes` together
    /// are refused. False where there are too many names.
    bool startIn(const ElementNames& open, std::uint64_t mostLongTagBytes);

    /// Goes on in the content of an element of which nothing is known.
    void startAnywhere(std::uint64_t mostLongTagBytes);

    /// Scans from `begin`, a boundary, to the first boundary from `stop` on; or, where a token
    /// before that is refused or cut off, to the last boundary before the token. Returns that
    /// boundary. The step records before it are in `sums`.
    const char* scan(const char* begin, const char* stop);

    /// The elements that were closed since the start and had been open before, the innermost first.
    ElementNames closed() const { return namesOf(_closedBefore); }

    /// The elements that are open and were opened since the start, or named at the start, the
    /// outermost first.
    ElementNames open() const { return namesOf(_open); }

    /// The bytes of all long tags since the start.
    std::uint64_t longTagBytes() const { return _longTagBytes; }

    /// What was added up since it was last taken away.
    StepSums& sums() { return _sums; }

  private:
    template <class Vectors>
    bool readTags(Piece* piece, const char* at, const char* stop);
    bool readTagsWithBaseline(Piece* piece, const char* at, const char* stop);
    bool readTagsWithAvx2(Piece* piece, const char* at, const char* stop);

    template <class Vectors>
    Piece* readValue(Piece& piece, const char* at, const char* stop, std::string_view& value);
    Piece* parse(const char* at, const char* stop);
    bool endTag(const Piece& piece, const char* at);
    bool changeDepth(const Markup& markup);
    void addIfStepRecord();
    static bool isStepType(std::string_view value);
    ElementNames namesOf(const std::vector<NameTable::Id>& ids) const;

    StepSums _sums;
    Names _names;
    NameTable::Id _recordElement;
    NameTable::Id _typeAttribute;
    NameTable::Id _startDateAttribute;
    NameTable::Id _valueAttribute;
    bool (TagScanner::*_readTags)(Piece*, const char*, const char*);

    PieceCache _cache;
    Piece _uncached;  // the last one that the cache did not take
    unsigned _scanCount = 0;
    std::uint64_t _tagCount = 0;

    bool _startedAnywhere = false;
    std::vector<NameTable::Id> _open;
    std::vector<NameTable::Id> _closedBefore;
    std::uint64_t _longTagBytes = 0;
    std::uint64_t _mostLongTagBytes = 0;

    const char* _boundary = nullptr;  // the last one that was reached

    // Of the tag that begins at the boundary.
    NameTable::Id _element = 0;
    unsigned _attributeCount = 0;
    NameSet _attributes;                        // the names of them
    std::array<std::string_view, 256> _values;  // by any Id; valid for those in the set
};

}  // namespace ambulet
