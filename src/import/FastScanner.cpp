#include "import/FastScanner.h"

#include "import/FastBytes.h"
#include "import/FastGrammar.h"
#include "import/StepRecord.h"

#include <algorithm>
#include <optional>

// What was verified once need not be verified again. The bytes between two values come from a small
// set; each is parsed once, and after that compared, first with the one that followed last time.
// Of long values, and of those with references or letters beyond ASCII, the last one of each
// attribute is kept and compared; others are looked over sixteen bytes at a time.
//
// A boundary is a place between two pieces of markup. Nothing of a tag counts before the markup
// after its last value is accepted, so at whatever is refused the state is that of the boundary.

namespace {

constexpr std::size_t deepest = 1000;

}  // namespace

FastScanner::FastScanner()
    : _recordElement(id(StepRecord::element)), _typeAttribute(id(StepRecord::typeAttribute)),
      _startDateAttribute(id(StepRecord::startDateAttribute)),
      _valueAttribute(id(StepRecord::valueAttribute)) {}

/// Of one of the first names, for which there is room.
FastNames::Id FastScanner::id(std::string_view name) {
    return _names.id(name).value();
}

bool FastScanner::startIn(const Names& open) {
    startAnywhere();
    _startedAnywhere = false;
    for (const std::string& name : open) {
        const auto id = _names.id(name);
        if (!id) {
            return false;
        }
        _open.push_back(*id);
    }
    return true;
}

void FastScanner::startAnywhere() {
    _startedAnywhere = true;
    _closedBefore.clear();
    _open.clear();
}

FastScanner::Names FastScanner::namesOf(const std::vector<FastNames::Id>& ids) const {
    Names names;
    for (const FastNames::Id id : ids) {
        names.push_back(_names.name(id));
    }
    return names;
}

const char* FastScanner::scan(const char* begin, const char* stop) {
    _boundary = begin;
    for (;;) {
        if (_boundary >= stop) {
            return _boundary;
        }
        // Not in a tag: no last literal, so the markup is parsed.
        const char* at = _boundary;
        const std::optional<FastMarkup> first = FastGrammar::inContent(_names, at, stop);
        if (!first || first->size == 0 || !accept(*first, at)) {
            return _boundary;
        }
        if (first->end == FastMarkup::End::content) {
            continue;
        }
        at = readValue(*first, at + first->size);

        FastLiterals::Literal* last = nullptr;
        for (;;) {
            if (at == nullptr) {
                return _boundary;
            }
            FastLiterals::Literal* literal = last == nullptr ? nullptr : last->next;
            if (literal == nullptr || !literal->isAt(at)) {
                literal = _literals.find(at);
            }
            if (literal != nullptr && at + literal->markup.size <= stop) {
                if (!accept(literal->markup, at)) {
                    return _boundary;
                }
                if (last != nullptr) {
                    last->next = literal;
                }
                last = literal;
                at = readValue(literal->markup, at + literal->markup.size);
                continue;
            }
            const std::optional<FastMarkup> markup = FastGrammar::afterValue(_names, at, stop);
            if (!markup || !accept(*markup, at)) {
                return _boundary;
            }
            if (markup->end == FastMarkup::End::content) {
                break;
            }
            last = literal == nullptr ? _literals.add(*markup, at) : nullptr;
            at = readValue(*markup, at + markup->size);
        }
    }
}

/// Does what the markup at `at` does. False, and nothing done but to the tag it begins, where that
/// is not well-formed here.
bool FastScanner::accept(const FastMarkup& markup, const char* at) {
    if (!mayClose(markup)) {
        return false;
    }
    finishTag(markup);
    if (markup.end == FastMarkup::End::content) {
        _boundary = at + markup.size;
        return true;
    }
    if (markup.beginsTag) {
        _boundary = at + markup.tagOffset;
        ++_tag;
        _element = markup.element;
        _isStepType = false;
        _startDate = {};
        _value = {};
    }
    if (markup.attribute >= _attributes.size()) {
        _attributes.resize(markup.attribute + std::size_t{1});
    }
    Attribute& attribute = _attributes[markup.attribute];
    const bool isFirst = attribute.tag != _tag;
    attribute.tag = _tag;
    return isFirst;
}

bool FastScanner::mayClose(const FastMarkup& markup) const {
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
    return true;
}

void FastScanner::finishTag(const FastMarkup& markup) {
    if (markup.endsTag) {
        if (_isStepType && _element == _recordElement) {
            addStepRecord();
        }
        if (!markup.isEmptyElement) {
            _open.push_back(_element);
        }
    }
    for (const FastNames::Id id : markup.closed()) {
        if (_open.empty()) {
            _closedBefore.push_back(id);
        } else {
            _open.pop_back();
        }
    }
    for (const FastNames::Id id : markup.opened()) {
        _open.push_back(id);
    }
}

/// The end of the value of the attribute in which `markup` ends; null where it is refused.
const char* FastScanner::readValue(const FastMarkup& markup, const char* at) {
    Attribute& attribute = _attributes[markup.attribute];
    const std::string& last = attribute.lastValue;
    Text value{at, nullptr, true};
    if (!last.empty() && last.back() == markup.quote &&
        FastBytes::equal(at, last.data(), last.size())) {
        value.end = at + last.size() - 1;
        value.isPlain = attribute.lastIsPlain;
        _isStepType |= attribute.lastIsStepType;
    } else {
        value.end = at + FastBytes::plainLength(at, markup.quote);
        if (*value.end != markup.quote) {
            value.isPlain = false;
            value.end = FastGrammar::valueEnd(value.end, markup.quote);
            if (value.end == nullptr) {
                return nullptr;
            }
        }
        if (markup.attribute == _typeAttribute) {
            attribute.lastIsStepType = isStepType(value);
            _isStepType = attribute.lastIsStepType;
        }
        keepValue(attribute, value);
    }
    if (markup.attribute == _startDateAttribute) {
        _startDate = value;
    } else if (markup.attribute == _valueAttribute) {
        _value = value;
    }
    return value.end;
}

void FastScanner::keepValue(Attribute& attribute, const Text& value) {
    constexpr std::ptrdiff_t quicklyLookedOver = 32;
    constexpr std::ptrdiff_t longest = 1000;
    const std::ptrdiff_t size = value.end - value.begin;
    if ((size < quicklyLookedOver && value.isPlain) || size > longest) {
        attribute.lastValue.clear();
        attribute.lastIsStepType = false;
        return;
    }
    attribute.lastValue.assign(value.begin, value.end + 1);
    attribute.lastIsPlain = value.isPlain;
}

bool FastScanner::isStepType(const Text& value) const {
    const std::string_view bytes(value.begin, value.end);
    return value.isPlain ? bytes == StepRecord::type
                         : FastGrammar::decoded(bytes) == StepRecord::type;
}

void FastScanner::addStepRecord() {
    if (_startDate.begin == nullptr || _value.begin == nullptr) {
        return;
    }
    const std::string_view startDate(_startDate.begin, _startDate.end);
    const std::string_view value(_value.begin, _value.end);
    if (_startDate.isPlain && _value.isPlain) {
        _sums.add(startDate, value);
    } else {
        _sums.add(FastGrammar::decoded(startDate), FastGrammar::decoded(value));
    }
}
