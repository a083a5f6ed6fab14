#include "import/fast/StrictParser.h"

#include "import/fast/ByteScan.h"
#include "import/xml/Characters.h"

#include <cstring>

namespace ambulet {

namespace {

/// Reads on from a place. Each step returns whether what it found is accepted.
class Walk {
  public:
    Walk(Names& names, const char* at, const char* stop)
        : _names(names), _begin(at), _at(at), _stop(stop) {}

    bool afterValue() {
        ++_at;  // the closing quote
        const bool wasBlank = skipBlanks();
        if (*_at == '/' || *_at == '>') {
            _markup.endsTag = true;
            _markup.isEmptyElement = *_at == '/';
            _at += _markup.isEmptyElement ? 1 : 0;
            return skip(">") && content();
        }
        return wasBlank && attribute();
    }

    bool content() {
        // After this many bytes without a value, the piece ends at the next token. A piece that
        // continues beyond the block is read again with the next block. This bounds what is read
        // twice to a sixty-fourth of a block. The pieces of exports have some dozens of bytes.
        constexpr std::ptrdiff_t mostBetweenValues = 4096;
        for (;;) {
            if (!text()) {
                return false;
            }
            if (_at >= _stop || _at - _begin > mostBetweenValues || _markup.isFull()) {
                _markup.end = Markup::End::content;
                return true;
            }
            if (isNameStart(_at[1])) {
                if (!startTag()) {
                    return false;
                }
                if (_markup.beginsTag) {
                    return true;
                }
            } else if (!(_at[1] == '/' ? endTag() : other())) {
                return false;
            }
        }
    }

    Markup result() {
        _markup.size = static_cast<std::size_t>(_at - _begin);
        return _markup;
    }

  private:
    bool skip(std::string_view text) {
        if (std::strncmp(_at, text.data(), text.size()) != 0) {
            return false;
        }
        _at += text.size();
        return true;
    }

    bool skipBlanks() {
        const char* const begin = _at;
        while (isWhiteSpace(*_at)) {
            ++_at;
        }
        return _at != begin;
    }

    std::optional<std::string_view> name() {
        if (!isNameStart(*_at)) {
            return std::nullopt;
        }
        const char* const begin = _at;
        while (isInName(*_at)) {
            ++_at;
        }
        // If the name continues with a non-ASCII letter, the next step refuses that.
        return std::string_view(begin, static_cast<std::size_t>(_at - begin));
    }

    std::optional<NameTable::Id> nameId(NameTable& names) {
        const auto found = name();
        return found ? names.id(*found) : std::nullopt;
    }

    bool attribute() {
        const auto id = nameId(_names.attributes);
        if (!id) {
            return false;
        }
        skipBlanks();
        if (!skip("=")) {
            return false;
        }
        skipBlanks();
        _markup.end = Markup::End::value;
        _markup.attribute = *id;
        _markup.quote = *_at;
        return skip("\"") || skip("'");
    }

    bool startTag() {
        const auto tagOffset = static_cast<std::size_t>(_at - _begin);
        ++_at;
        const auto id = nameId(_names.elements);
        if (!id) {
            return false;
        }
        const bool wasBlank = skipBlanks();
        if (*_at == '/') {
            return skip("/>");
        }
        if (*_at == '>') {
            ++_at;
            _markup.open(*id);
            return true;
        }
        _markup.beginsTag = true;
        _markup.tagOffset = tagOffset;
        _markup.element = *id;
        return wasBlank && attribute();
    }

    bool endTag() {
        _at += 2;
        const auto id = nameId(_names.elements);
        skipBlanks();
        return id && skip(">") && _markup.close(*id);
    }

    /// A comment, a processing instruction or a CDATA section.
    bool other() {
        _markup.isTagsOnly = false;
        if (skip("<!--")) {
            return skipPast("--") && skip(">");
        }
        if (skip("<![CDATA[")) {
            return skipPast("]]>");
        }
        if (!skip("<?")) {
            return false;
        }
        const auto target = name();
        const bool isReserved = target && target->size() == 3 && ((*target)[0] | 0x20) == 'x' &&
                                ((*target)[1] | 0x20) == 'm' && ((*target)[2] | 0x20) == 'l';
        return target && !isReserved && (skip("?>") || (skipBlanks() && skipPast("?>")));
    }

    /// Skips all characters up to `end`, and `end`.
    bool skipPast(std::string_view end) {
        for (;;) {
            _at = ByteScan::findSpecial(_at, end[0]);
            if (skip(end)) {
                return true;
            }
            const std::size_t size = characterSize(_at);
            if (size == 0) {
                return false;
            }
            _at += size;
        }
    }

    /// Text up to a "<".
    bool text() {
        skipBlanks();
        for (; *_at != '<'; _at = ByteScan::findSpecial(_at, ']')) {
            _markup.isTagsOnly = false;
            const bool isSectionEnd = _at[0] == ']' && _at[1] == ']' && _at[2] == '>';
            const std::size_t size =
                isSectionEnd ? 0 : (*_at == '&' ? reference(_at).size : characterSize(_at));
            if (size == 0) {
                return false;
            }
            _at += size;
        }
        return true;
    }

    Names& _names;
    const char* _begin;
    const char* _at;
    const char* _stop;
    Markup _markup;
};

}  // namespace

std::optional<Markup> StrictParser::afterValue(Names& names, const char* at, const char* stop) {
    Walk walk(names, at, stop);
    return walk.afterValue() ? std::optional(walk.result()) : std::nullopt;
}

std::optional<Markup> StrictParser::inContent(Names& names, const char* at, const char* stop) {
    Walk walk(names, at, stop);
    return walk.content() ? std::optional(walk.result()) : std::nullopt;
}

const char* StrictParser::valueEnd(const char* at, char quote) {
    while (*at != quote && *at != '<') {
        const std::size_t size = *at == '&' ? reference(at).size : characterSize(at);
        if (size == 0) {
            break;
        }
        at += size;
        // References and letters beyond ASCII often come in a row, or last.
        if (*at != '&' && *at != quote && static_cast<unsigned char>(*at) < 0x80) {
            at = ByteScan::findSpecial(at, quote);
        }
    }
    return at;
}

}  // namespace ambulet
