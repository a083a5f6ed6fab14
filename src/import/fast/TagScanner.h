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

/// Sums the step records in a part of memory, as far as it can verify that the bytes there are
/// well-formed. It keeps verified markup, and compares later bytes with it. One thread at a time.
///
/// A boundary is a position in the content of an element between two tokens: tags, comments,
/// processing instructions, CDATA sections and texts.
class TagScanner {
  public:
    using ElementNames = std::vector<std::string>;

    /// The number of null characters that must follow the last byte: comparisons read beyond it.
    static constexpr std::size_t padding = Prediction::mostBytes + 2 * ByteScan::width;

    /// The limit of the number of open elements. Elements that were opened before a scan: once it
    /// has closed more than this number of them, no more are accepted. Exports have five levels.
    static constexpr std::size_t deepest = 100;

    /// A tag of more bytes is a long tag. For shorter tags, expat keeps little memory, however many
    /// it reads (see ExportReader.cpp). The tags of exports have less than a tenth of this.
    static constexpr std::size_t longTag = 8191;

    TagScanner();

    /// `open`: the names of all open elements, the root first. Resets the state to the content of
    /// the last of them. The scan does not accept the root's end tag, nor long tags of more than
    /// `mostLongTagBytes` together. False if there are too many names.
    bool startIn(const ElementNames& open, std::uint64_t mostLongTagBytes);

    /// Resets the state to the content of an unknown element.
    void startAnywhere(std::uint64_t mostLongTagBytes);

    /// Scans from the boundary `begin` to the first "<" at or after `stop` that is a boundary. If a
    /// token before that is refused or incomplete, the scan ends at an earlier boundary. Returns
    /// the boundary where it ended. The step records before that are in `sums`.
    const char* scan(const char* begin, const char* stop);

    /// The elements that were closed since the reset and opened before it, the innermost first.
    ElementNames closed() const { return namesOf(_closedBefore); }

    /// The open elements, without those opened before `startAnywhere`. The outermost is first.
    ElementNames open() const { return namesOf(_open); }

    /// The bytes of all long tags since the reset.
    std::uint64_t longTagBytes() const { return _longTagBytes; }

    /// The sums of the records scanned since the last `sums().takeAll()`.
    StepSums& sums() { return _sums; }

  private:
    template <class Vectors>
    bool readTags(Piece* piece, const char* at, const char* stop);
    bool readTagsWithBaseline(Piece* piece, const char* at, const char* stop);
    bool readTagsWithAvx2(Piece* piece, const char* at, const char* stop);

    template <class Vectors>
    static const char* valueEnd(const char* at, char quote);
    Piece* pieceAfterValue(Piece& piece, std::string_view value, const char* stop);
    Piece* parse(const char* at, const char* stop);
    bool endTag(const Markup& markup, const char* at);
    bool changeDepth(const Markup& markup);
    bool mayBeStepRecord() const;
    void addIfStepRecord();
    ElementNames namesOf(const std::vector<NameTable::Id>& ids) const;

    StepSums _sums;
    Names _names;
    NameTable::Id _recordElement;
    NameTable::Id _typeAttribute;
    NameTable::Id _startDateAttribute;
    NameTable::Id _valueAttribute;
    bool (TagScanner::*_readTags)(Piece*, const char*, const char*);

    PieceCache _cache;
    Piece _uncached;  // the last piece that the cache did not accept; never has predictions
    unsigned _scanCount = 0;
    std::uint64_t _tagCount = 0;

    bool _startedAnywhere = false;
    std::vector<NameTable::Id> _open;
    std::vector<NameTable::Id> _closedBefore;
    std::uint64_t _longTagBytes = 0;
    std::uint64_t _mostLongTagBytes = 0;

    const char* _boundary = nullptr;  // the last one reached

    // The tag that begins at the boundary.
    NameTable::Id _element = 0;
    struct alignas(32) Value {  // a power of two is indexed faster
        std::string_view text;
        std::uint64_t tag = 0;  // the number of the tag to which it belongs
    };
    std::array<Value, 256> _values;  // by name
};

}  // namespace ambulet
