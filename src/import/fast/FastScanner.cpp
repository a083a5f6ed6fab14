#include "import/fast/FastScanner.h"

#include "import/fast/FastBytes.h"
#include "import/fast/FastGrammar.h"
#include "import/steps/StepRecord.h"

#include <algorithm>

namespace ambulet {

// What was verified once need not be verified again. The bytes between two values come from a small
// set; each is parsed once. With the values that come again, and what follows those, they make long
// runs that are compared at once, first with the one that followed the last two times. Values that
// vary are looked over sixteen bytes at a time; long ones, and those with references or letters
// beyond ASCII, are kept and compared.
//
// A boundary is a place between two pieces of markup. Nothing of a tag counts before the markup
// after its last value is accepted, so at whatever is refused the state is that of the boundary.

namespace {

constexpr std::size_t deepest = 100;

}  // namespace

FastScanner::FastScanner()
    : _recordElement(_names.elements.id(StepRecord::element).value()),
      _typeAttribute(_names.attributes.id(StepRecord::typeAttribute).value()),
      _startDateAttribute(_names.attributes.id(StepRecord::startDateAttribute).value()),
      _valueAttribute(_names.attributes.id(StepRecord::valueAttribute).value()) {
    for (const FastNames::Id name : {_typeAttribute, _startDateAttribute, _valueAttribute}) {
        _attributes[name].isWanted = true;
    }
    _joining.setVaries(_startDateAttribute);
    _joining.setVaries(_valueAttribute);
}

bool FastScanner::startIn(const Names& open) {
    startAnywhere();
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

void FastScanner::startAnywhere() {
    _startedAnywhere = true;
    _closedBefore.clear();
    _open.clear();
}

FastScanner::Names FastScanner::namesOf(const std::vector<FastNames::Id>& ids) const {
    Names names;
    for (const FastNames::Id id : ids) {
        names.push_back(_names.elements.name(id));
    }
    return names;
}

const char* FastScanner::scan(const char* begin, const char* stop) {
    _boundary = begin;
    if (_joining.judge(_tagCount) || _runs.isFull()) {
        _runs.clear();
    }
    while (_boundary < stop) {
        const char* const at = _boundary;
        const auto markup = FastGrammar::inContent(_names, at, stop);
        if (!markup || markup->size == 0 || !accept(FastRun::Part(*markup), at)) {
            break;
        }
        if (markup->end == FastMarkup::End::content) {
            _boundary = at + markup->size;
        } else if (!readTags(*markup, at, stop)) {
            break;
        }
    }
    return _boundary;
}

/// Reads on from value to value, with `begin` at `at` before the first one. False where it does not
/// come to content, which becomes the boundary.
bool FastScanner::readTags(const FastMarkup& begin, const char* at, const char* stop) {
    const char* value = at + begin.size;
    at = readValue(begin.attribute, begin.quote, value);
    FastRun* last = nullptr;  // before the value
    while (at != nullptr) {
        FastRun* run = _runs.find(at, stop, last);
        if (run != nullptr) {
            if (!accept(*run, at)) {
                return false;
            }
            if (last != nullptr) {
                follow(*last, {value, at}, *run);
            }
            value = at + run->bytes.size();
            at = readValue(run->attribute, run->quote, value);
        } else {
            const auto markup = FastGrammar::afterValue(_names, at, stop);
            if (!markup || !accept(FastRun::Part(*markup), at)) {
                return false;
            }
            value = at + markup->size;
            if (markup->end == FastMarkup::End::content) {
                _boundary = value;
                return true;
            }
            run = _runs.add(*markup, at);
            at = readValue(markup->attribute, markup->quote, value);
        }
        last = run;
    }
    return false;
}

/// Keeps what was learnt from `run`, which came after `last` and a value.
inline void FastScanner::follow(FastRun& last, std::string_view value, FastRun& run) {
    last.next = last.recent == &run ? &run : nullptr;
    last.recent = &run;
    if (_joining.pays(last.attribute)) {
        join(last, value, run.root());
    }
}

/// Makes `last` longer by the value and what followed.
void FastScanner::join(FastRun& last, std::string_view value, const FastRun& next) {
    const bool isStep = last.attribute == _typeAttribute &&
                        isStepType({value.data(), value.data() + value.size(), false});
    _runs.join(last, value, isStep, next);
    _joining.note(last.attribute, value, last.longerCount);
}

inline bool FastScanner::accept(const FastRun& run, const char* at) {
    if (run.isInOneTag) {
        return addAttributes(run.parts.front());
    }
    for (const FastRun::Part& part : run.parts) {
        if (!accept(part, at + part.offset)) {
            return false;
        }
    }
    return true;
}

/// Does what the markup at `at` does. False, and nothing done but to the tag it begins, where that
/// is not well-formed here.
inline bool FastScanner::accept(const FastRun::Part& part, const char* at) {
    const FastMarkup& markup = part.markup;
    if (!part.keepsDepth && !changeDepth(markup)) {
        return false;
    }
    if (markup.endsTag && _isStepType && _element == _recordElement) {
        addStepRecord();
    }
    if (markup.beginsTag) {
        _boundary = at + markup.tagOffset;
        ++_tagCount;
        _element = markup.element;
        _tagAttributes = part.attributes;
        _isStepType = part.isStepType;
        _startDate = {};
        _value = {};
        return true;
    }
    if (markup.end == FastMarkup::End::content) {
        return true;
    }
    return addAttributes(part);
}

/// False where the tag has one of them already.
inline bool FastScanner::addAttributes(const FastRun::Part& part) {
    const bool isRepeated = _tagAttributes.hasAnyOf(part.attributes);
    _tagAttributes.add(part.attributes);
    _isStepType |= part.isStepType;
    return !isRepeated;
}

/// False, and nothing done, where the markup closes another element than the one that is open, or
/// there are too many open.
bool FastScanner::changeDepth(const FastMarkup& markup) {
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
    for (const FastNames::Id id : closed) {
        if (_open.empty()) {
            _closedBefore.push_back(id);
        } else {
            _open.pop_back();
        }
    }
    for (const FastNames::Id id : markup.opened()) {
        _open.push_back(id);
    }
    return true;
}

/// The end of the attribute's value at `at`; null where it is refused.
inline const char* FastScanner::readValue(FastNames::Id name, char quote, const char* at) {
    Attribute& attribute = _attributes[name];
    Text value{at, at + attribute.usualSize, true};
    if (*value.end != quote || !FastBytes::arePlain(at, attribute.usualSize, quote)) {
        value.end = at + FastBytes::plainLength(at, quote);
        if (*value.end != quote) {
            value = valueInFull(quote, at);
            if (value.end == nullptr) {
                return nullptr;
            }
        }
        const auto size = static_cast<std::size_t>(value.end - at);
        attribute.usualSize = size <= FastBytes::mostArePlain ? size : 0;
    }
    if (attribute.isWanted) {
        keepWanted(name, value);
    }
    return value.end;
}

/// The same for a value with more than printable ASCII.
FastScanner::Text FastScanner::valueInFull(char quote, const char* at) {
    const std::size_t knownSize = _values.sizeAt(quote, at);
    if (knownSize != 0) {
        return {at, at + knownSize, false};
    }
    const char* const end = FastGrammar::valueEnd(at, quote);
    if (end != nullptr) {
        _values.keep({at, end + 1});
    }
    return {at, end, false};
}

void FastScanner::keepWanted(FastNames::Id name, const Text& value) {
    if (name == _typeAttribute) {
        _isStepType = isStepType(value);
    } else if (name == _startDateAttribute) {
        _startDate = value;
    } else {
        _value = value;
    }
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

}  // namespace ambulet
