#include "import/expat/Doctype.h"

#include "import/expat/CodeUnits.h"
#include "import/xml/Characters.h"
#include "import/xml/InputFile.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace ambulet {

// A malformed document type declaration cannot be parsed. So the search for its end looks for "]>",
// which is rare inside a declaration. After an unclosed quote, text outside quotes seems to be
// inside, and the "]>" is missed. So the root's start tag also ends the search, even if it seems to
// be inside quotes.

namespace {

/// The text of a file, one code unit at a time. A unit has one byte, or two in UTF-16.
class Units {
  public:
    static constexpr int none = -1;

    explicit Units(const InputFile& file) : _file(file) {
        const CodeUnits units = codeUnits(PatchedFile(file));
        _bigEndian = units == CodeUnits::utf16BigEndian;
        _width = units == CodeUnits::bytes ? 1 : 2;
        skip(_width == 2 ? u"\uFEFF" : u"\u00EF\u00BB\u00BF");  // the byte order mark
    }

    /// The offset of the next unit in the file.
    std::uint64_t offset() const { return _offset; }

    /// The next unit; `none` at the end of the file.
    int peek() {
        const int first = byteAt(_offset);
        const int second = _width == 1 ? 0 : byteAt(_offset + 1);
        if (first == none || second == none) {
            return none;
        }
        return _bigEndian ? first << 8 | second : second << 8 | first;
    }

    /// Skips the next unit and returns it.
    int next() {
        const int unit = peek();
        _offset += unit == none ? 0 : _width;
        return unit;
    }

    /// Skips `text` if it comes next, and returns whether it did.
    bool skip(std::u16string_view text) {
        const std::uint64_t begin = _offset;
        const bool found =
            std::ranges::all_of(text, [this](char16_t unit) { return next() == unit; });
        _offset = found ? _offset : begin;
        return found;
    }

    void skipWhiteSpace() {
        while (isWhiteSpace(peek())) {
            next();
        }
    }

    /// Skips everything up to and including the next `text`, or up to the end of the file.
    void skipPast(std::u16string_view text) {
        std::u16string last;
        while (last != text) {
            const int unit = next();
            if (unit == none) {
                return;
            }
            last.push_back(static_cast<char16_t>(unit));
            last.erase(0, last.size() > text.size() ? 1 : 0);
        }
    }

  private:
    int byteAt(std::uint64_t offset) {
        if (offset < _blockBegin || offset >= _blockBegin + _blockSize) {
            std::error_code asIfTheFileEnded;
            _blockBegin = offset;
            _blockSize = _file.read(offset, _block, asIfTheFileEnded);
        }
        return _blockSize == 0 ? none : static_cast<unsigned char>(_block[offset - _blockBegin]);
    }

    const InputFile& _file;
    // The declarations in exports have a few kilobytes.
    std::vector<char> _block = std::vector<char>(std::size_t{64} * 1024);
    std::uint64_t _blockBegin = 0;
    std::size_t _blockSize = 0;
    std::uint64_t _offset = 0;
    unsigned _width = 1;
    bool _bigEndian = false;
};

/// Skips to the root's name in the document type declaration. Returns the offset of the
/// declaration, or nothing if the prolog has none.
std::optional<std::uint64_t> skipToRootName(Units& units) {
    for (;;) {
        units.skipWhiteSpace();
        const std::uint64_t begin = units.offset();
        if (!units.skip(u"<")) {
            return std::nullopt;
        }
        if (units.skip(u"?")) {
            units.skipPast(u"?>");
        } else if (units.skip(u"!--")) {
            units.skipPast(u"-->");
        } else if (units.skip(u"!DOCTYPE")) {
            units.skipWhiteSpace();
            return begin;
        } else {
            return std::nullopt;
        }
    }
}

std::u16string rootName(Units& units) {
    constexpr std::size_t longest = 1000;  // the tag of a root with a longer name is not recognised
    constexpr std::u16string_view notInNames = u"[]<>'\"";
    std::u16string name;
    for (int unit = units.peek();
         unit != Units::none && !isWhiteSpace(unit) && name.size() < longest &&
         notInNames.find(static_cast<char16_t>(unit)) == std::u16string_view::npos;
         unit = units.peek()) {
        name.push_back(static_cast<char16_t>(units.next()));
    }
    return name;
}

/// Whether a start tag of the element `name` follows a "<"; of any element if `name` is empty.
/// Skips `name` if it is next.
bool skipRootTag(Units& units, std::u16string_view name) {
    if (name.empty()) {
        return isNameStart(units.peek()) || units.peek() >= 0x80;
    }
    if (!units.skip(name)) {
        return false;
    }
    const int next = units.peek();
    return isWhiteSpace(next) || next == '>' || next == '/';
}

}  // namespace

std::optional<ByteRange> findDoctype(const InputFile& file) {
    Units units(file);
    const std::optional<std::uint64_t> begin = skipToRootName(units);
    if (!begin) {
        return std::nullopt;
    }
    const std::u16string root = rootName(units);
    int quote = 0;
    for (;;) {
        const std::uint64_t offset = units.offset();
        const int unit = units.next();
        if (unit == Units::none) {
            return std::nullopt;
        }
        if (unit == '<') {
            if (skipRootTag(units, root)) {
                return ByteRange{*begin, offset};
            }
            if (quote == 0 && units.skip(u"?")) {
                units.skipPast(u"?>");
            } else if (quote == 0 && units.skip(u"!--")) {
                units.skipPast(u"-->");
            }
        } else if (quote != 0) {
            quote = unit == quote ? 0 : quote;
        } else if (unit == '\'' || unit == '"') {
            quote = unit;
        } else if (unit == ']') {
            units.skipWhiteSpace();
            if (units.skip(u">")) {
                return ByteRange{*begin, units.offset()};
            }
        }
    }
}

}  // namespace ambulet
