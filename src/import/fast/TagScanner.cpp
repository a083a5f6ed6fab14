#include "import/fast/TagScanner.h"

#include "import/fast/StrictParser.h"
#include "import/steps/StepRecord.h"
#include "import/xml/Characters.h"

#include <algorithm>
#include <utility>

// The markup between two values comes from a small set of pieces. `" unit="` is one; the end of a
// tag, a line break and ` <Record type="` together are another. Each piece is verified once, by the
// strict parser, and kept with its effect. A piece predicts what follows it:
//
// - A value like one of three learnt before, and the piece that followed it. One comparison passes
//   both. A plain character may replace another; all other bytes must be equal.
// - If the size of the values varies, only the piece. A mask finds the end of the value.
//
// A piece that is not predicted is looked up in the cache. If it is not there, it is verified.
//
// A tag counts only when the piece after its last value is accepted. If something is refused, the
// state is that of the boundary before the tag, and nothing has to be undone.

namespace ambulet {

namespace {

/// After a dozen misses of a piece in close succession, which is four for each of its predictions,
/// the sizes of its values are assumed to vary: a miss takes as much time as a dozen hits save. Two
/// misses are close if fewer than 64 tags are between them. A piece may occur only once in about
/// nine tags, if attributes come in any order. 32 and 128 take the same time.
constexpr std::uint64_t closeSuccession = 64;
constexpr unsigned mostMisses = 12;

/// Pieces without predictions get them again after this number of blocks, which is about 16 MiB.
/// Twelve misses of a hundred pieces take a thirtieth of the time for that many bytes.
constexpr unsigned blocksBetweenRetries = 16;

const char* endOf(std::string_view value) {
    return value.data() + value.size();
}

}  // namespace

[[gnu::noinline]] void Prediction::learn(std::string_view value, Piece& piece) {
    const std::size_t size = value.size() + piece.markup.size;
    const std::size_t count = (size + ByteScan::width - 1) / ByteScan::width;
    _ranges = std::make_unique<Ranges[]>(count);
    _rangeCount = static_cast<unsigned>(count);
    _valueSize = value.size();
    _size = size;
    _next = &piece;
    _ranges[count - 1].spans.fill(static_cast<char>(0xFF));
    bool isInReference = false;
    for (std::size_t index = 0; index < _size; ++index) {
        const bool isValue = index < value.size();
        const char byte = isValue ? value[index] : piece.bytes[index - value.size()];
        isInReference = isInReference || byte == '&';
        const bool mayDiffer =
            isValue && !isInReference && lowestPlain <= byte && byte <= highestPlain;
        isInReference = isInReference && byte != ';';

        const std::size_t place = index % ByteScan::width;
        Ranges& ranges = _ranges[index / ByteScan::width];
        ranges.lowest[place] = mayDiffer ? lowestPlain : byte;
        ranges.spans[place] = mayDiffer ? highestPlain - lowestPlain : 0;
    }
}

TagScanner::TagScanner()
    : _recordElement(_names.elements.id(StepRecord::element).value()),
      _typeAttribute(_names.attributes.id(StepRecord::typeAttribute).value()),
      _startDateAttribute(_names.attributes.id(StepRecord::startDateAttribute).value()),
      _valueAttribute(_names.attributes.id(StepRecord::valueAttribute).value()),
      _readTags(&TagScanner::readTagsWithBaseline) {
    _uncached.misses = mostMisses;  // no predictions: it stands for a different piece each time
#if defined(__SSE2__)
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi")) {
        _readTags = &TagScanner::readTagsWithAvx2;
    }
#endif
}

bool TagScanner::startIn(const ElementNames& open, std::uint64_t mostLongTagBytes) {
    startAnywhere(mostLongTagBytes);
    _startedAnywhere = false;
    for (const std::string& name : open) {
        const auto id = _names.elements.id(name);
        if (!id) {
            return false;
        }
        _open.push_back(*id);
    }
    return true;
}

void TagScanner::startAnywhere(std::uint64_t mostLongTagBytes) {
    _startedAnywhere = true;
    _mostLongTagBytes = mostLongTagBytes;
    _closedBefore.clear();
    _open.clear();
    _longTagBytes = 0;
}

TagScanner::ElementNames TagScanner::namesOf(const std::vector<NameTable::Id>& ids) const {
    ElementNames names;
    for (const NameTable::Id id : ids) {
        names.push_back(_names.elements.name(id));
    }
    return names;
}

const char* TagScanner::scan(const char* begin, const char* stop) {
    if (_cache.isFull()) {
        _cache.clear();
        _uncached.successor = nullptr;
    }
    if (++_scanCount % blocksBetweenRetries == 0) {
        _cache.retryPredictions();
    }
    _boundary = begin;
    while (_boundary < stop) {
        const auto markup = StrictParser::inContent(_names, _boundary, stop);
        if (!markup || !changeDepth(*markup)) {
            break;
        }
        const char* const end = _boundary + markup->size;
        if (markup->end == Markup::End::content) {
            _boundary = end;
            continue;
        }
        _boundary += markup->tagOffset;
        _uncached.markup = *markup;
        _element = markup->element;
        ++_tagCount;
        if (!(this->*_readTags)(&_uncached, end, stop)) {
            break;
        }
    }
    return _boundary;
}

/// The hot loop. Reads from value to value; the first one is at `at`, after `piece`. True if the
/// boundary is at or after `stop`, or is followed by more content. False if something is refused.
template <class Vectors>
[[gnu::always_inline]] inline bool TagScanner::readTags(Piece* piece, const char* at,
                                                        const char* stop) {
    std::uint64_t tag = _tagCount;  // in a register
    for (;;) {
        Value& value = _values[piece->markup.attribute];
        if (value.tag == tag) {
            return false;  // two attributes have the same name
        }
        value.tag = tag;
        const char* end = nullptr;  // of the value
        Piece* next = nullptr;
        if (const Prediction* const prediction = piece->predictionAt<Vectors>(at)) [[likely]] {
            next = &prediction->next();
            end = at + prediction->valueSize();
            value.text = {at, end};
            at += prediction->size();
        } else {
            const char quote = piece->markup.quote;
            end = valueEnd<Vectors>(at, quote);
            value.text = {at, end};
            next = *end == quote ? pieceAfterValue(*piece, value.text, stop) : nullptr;
            if (next == nullptr) {
                return false;
            }
            at = end + next->markup.size;
        }
        if (next->markup.endsTag) [[unlikely]] {
            if (at > stop) {
                next = parse(end, stop);  // only what is before `stop`
                if (next == nullptr) {
                    return false;
                }
                at = end + next->markup.size;
            }
            if (!endTag(next->markup, end)) {
                return false;
            }
            if (next->markup.end == Markup::End::content) {
                return true;
            }
            tag = _tagCount;
        }
        piece = next;
    }
}

[[gnu::flatten]] bool TagScanner::readTagsWithBaseline(Piece* piece, const char* at,
                                                       const char* stop) {
    return readTags<ByteScan::Baseline>(piece, at, stop);
}

#if defined(__SSE2__)
[[gnu::target("avx2,bmi"), gnu::flatten]] bool
TagScanner::readTagsWithAvx2(Piece* piece, const char* at, const char* stop) {
    return readTags<ByteScan::Avx2>(piece, at, stop);
}
#endif

/// The end of the value at `at`: its closing quote, or a byte that is refused.
template <class Vectors>
[[gnu::always_inline]] inline const char* TagScanner::valueEnd(const char* at, char quote) {
    ByteScan::Mask special = Vectors::special(at, quote);
    while (special == 0) {
        at += ByteScan::width;
        special = Vectors::special(at, quote);
    }
    at += std::countr_zero(special);
    return *at == quote ? at : StrictParser::valueEnd(at, quote);
}

/// The piece after `value`; null if it is refused. `piece` is the one before the value. None of its
/// predictions holds.
[[gnu::always_inline]] inline Piece*
TagScanner::pieceAfterValue(Piece& piece, std::string_view value, const char* stop) {
    const char* const end = endOf(value);
    Piece* next = piece.successor;
    if (next == nullptr || !next->isAt(end)) {
        next = _cache.find(_element, end);
        if (next == nullptr) {
            next = parse(end, stop);
            if (next == nullptr || next == &_uncached) {
                return next;
            }
        }
        piece.successor = next;
    }
    if (piece.misses < mostMisses && value.size() + next->markup.size <= Prediction::mostBytes) {
        const bool isClose = _tagCount - std::exchange(piece.lastMiss, _tagCount) < closeSuccession;
        piece.misses = isClose ? piece.misses + 1 : 0;
        std::rotate(piece.predictions.begin(), piece.predictions.end() - 1,
                    piece.predictions.end());
        piece.predictions[0].learn(value, *next);
        if (piece.misses == mostMisses) {
            piece.predictions = {};
        }
    }
    return next;
}

/// Verifies and keeps the piece at `at`, after a value. Null if it is refused.
[[gnu::noinline]] Piece* TagScanner::parse(const char* at, const char* stop) {
    const auto markup = StrictParser::afterValue(_names, at, stop);
    if (!markup) {
        return nullptr;
    }
    Piece* piece = at + markup->size <= stop ? _cache.add(_element, *markup, at) : nullptr;
    if (piece == nullptr) {
        piece = &_uncached;
        piece->markup = *markup;
    }
    return piece;
}

/// Applies the markup at `at`, which ends the tag at the boundary and may begin the next one.
/// False, with no effect, if that is not well-formed here.
[[gnu::always_inline]] inline bool TagScanner::endTag(const Markup& markup, const char* at) {
    const auto tagSize = static_cast<std::uint64_t>(at - _boundary);
    const std::uint64_t longTagBytes = _longTagBytes + (tagSize > longTag ? tagSize : 0);
    if (longTagBytes > _mostLongTagBytes || (!markup.keepsDepth() && !changeDepth(markup))) {
        return false;
    }
    _longTagBytes = longTagBytes;
    if (_element == _recordElement && mayBeStepRecord()) {
        addIfStepRecord();
    }
    ++_tagCount;
    if (markup.beginsTag) {
        _boundary = at + markup.tagOffset;
        _element = markup.element;
    } else {
        _boundary = at + markup.size;
    }
    return true;
}

/// Applies the markup to the open elements. False, with no effect, if it closes an element that is
/// not the innermost open one, or if too many would be open.
[[gnu::noinline]] bool TagScanner::changeDepth(const Markup& markup) {
    const auto closed = markup.closed();
    const bool opensElement = markup.endsTag && !markup.isEmptyElement;
    const std::size_t depth = _open.size() + (opensElement ? 1 : 0);
    if (depth + markup.opened().size() > deepest || _closedBefore.size() > deepest ||
        (closed.size() >= depth && !closed.empty() && !_startedAnywhere)) {
        return false;
    }
    for (std::size_t index = 0; index < std::min(closed.size(), depth); ++index) {
        const std::size_t level = depth - 1 - index;
        if (closed[index] != (level == _open.size() ? _element : _open[level])) {
            return false;
        }
    }
    if (opensElement) {
        _open.push_back(_element);
    }
    for (const NameTable::Id id : closed) {
        if (_open.empty()) {
            _closedBefore.push_back(id);
        } else {
            _open.pop_back();
        }
    }
    _open.insert(_open.end(), markup.opened().begin(), markup.opened().end());
    return true;
}

/// Whether the record's type is that of step records, as far as the first 32 bytes tell, or has a
/// reference.
[[gnu::always_inline]] inline bool TagScanner::mayBeStepRecord() const {
    constexpr std::string_view type = StepRecord::type;
    static_assert(type.size() > ByteScan::width);
    const Value& value = _values[_typeAttribute];
    if (value.tag != _tagCount) {
        return false;
    }
    const ByteScan::Mask differing = ByteScan::Baseline::differing(value.text.data(), type.data());
    return differing == 0 || value.text.data()[std::countr_zero(differing)] == '&';
}

[[gnu::noinline]] void TagScanner::addIfStepRecord() {
    const auto has = [this](NameTable::Id attribute) {
        return _values[attribute].tag == _tagCount;
    };
    const std::string_view type = _values[_typeAttribute].text;
    if ((type != StepRecord::type && decodedValue(type) != StepRecord::type) ||
        !has(_startDateAttribute) || !has(_valueAttribute)) {
        return;
    }
    const std::string_view startDate = _values[_startDateAttribute].text;
    const std::string_view value = _values[_valueAttribute].text;
    // Whether the text, which a quote follows, is printable ASCII without references.
    const auto isPlain = [](std::string_view text) {
        return ByteScan::findSpecial(text.data(), *endOf(text)) == endOf(text);
    };
    if (isPlain(startDate) && isPlain(value)) {
        _sums.add(startDate, value);
    } else {
        _sums.add(decodedValue(startDate), decodedValue(value));
    }
}

}  // namespace ambulet
