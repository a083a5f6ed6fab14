#include "import/fast/StrictParser.h"

#include "import/fast/ByteScan.h"

#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace ambulet {

namespace {

bool isBlank(char byte) {
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
}

bool isNameStart(char byte) {
    return ('a' <= byte && byte <= 'z') || ('A' <= byte && byte <= 'Z') || byte == '_' ||
           byte == ':';
}

bool isNameByte(char byte) {
    return isNameStart(byte) || ('0' <= byte && byte <= '9') || byte == '-' || byte == '.';
}

bool isCharacter(std::uint32_t code) {
    return code == '\t' || code == '\n' || code == '\r' || (0x20 <= code && code < 0xD800) ||
           (0xE000 <= code && code < 0xFFFE) || (0x10000 <= code && code < 0x110000);
}

/// The number of bytes of the character at `at`; 0 if it is malformed or not allowed in a document.
std::size_t characterSize(const char* at) {
    std::int32_t size = 0;
    UChar32 code = 0;
    // NOLINTNEXTLINE(bugprone-inc-dec-in-conditions): ICU's macro does it
    U8_NEXT(reinterpret_cast<const std::uint8_t*>(at), size, -1, code);
    return code >= 0 && isCharacter(static_cast<std::uint32_t>(code))
               ? static_cast<std::size_t>(size)
               : 0;
}

struct Reference {
    std::size_t size = 0;
    std::uint32_t code = 0;
};

/// The reference to a character or a predefined entity that begins with the "&" at `at`. Its size
/// is 0 if there is none.
Reference reference(const char* at) {
    static constexpr struct {
        std::string_view text;
        std::uint32_t code;
    } predefined[] = {
        {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}};
    for (const auto& each : predefined) {
        if (std::equal(each.text.begin(), each.text.end(), at)) {
            return {each.text.size(), each.code};
        }
    }
    constexpr std::size_t mostBytes = 10;  // &#1114111;
    const char* const limit = at + ::strnlen(at, mostBytes);
    const char* const end = std::find(at, limit, ';');
    if (end == limit || at[1] != '#') {
        return {};
    }
    const bool isHexadecimal = at[2] == 'x';
    std::uint32_t code = 0;
    const auto read =
        std::from_chars(at + (isHexadecimal ? 3 : 2), end, code, isHexadecimal ? 16 : 10);
    const bool isWhole = read.ec == std::errc() && read.ptr == end;
    return isWhole && isCharacter(code) ? Reference{static_cast<std::size_t>(end - at) + 1, code}
                                        : Reference{};
}

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
        while (isBlank(*_at)) {
            ++_at;
        }
        return _at != begin;
    }

    std::optional<std::string_view> name() {
        if (!isNameStart(*_at)) {
            return std::nullopt;
        }
        const char* const begin = _at;
        while (isNameByte(*_at)) {
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

std::string StrictParser::decoded(std::string_view value) {
    const std::string text(value);  // a null character ends it
    std::string result;
    for (const char* at = text.c_str(); *at != '\0';) {
        if (*at == '&') {
            const Reference character = reference(at);
            icu::UnicodeString(static_cast<UChar32>(character.code)).toUTF8String(result);
            at += character.size;
        } else if (isBlank(*at)) {
            at += at[0] == '\r' && at[1] == '\n' ? 2 : 1;
            result.push_back(' ');
        } else {
            result.push_back(*at++);
        }
    }
    return result;
}

}  // namespace ambulet
