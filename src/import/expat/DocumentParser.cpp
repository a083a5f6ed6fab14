#include "import/expat/DocumentParser.h"

#include "import/expat/CodeUnits.h"

#include <array>
#include <system_error>

namespace ambulet {

DocumentParser::DocumentParser(const PatchedFile& bytes, XMLReaderDelegate& delegate,
                               std::size_t blockSize, ExpatLimits limits)
    : _bytes(bytes), _delegate(delegate), _parser(bytes, blockSize, limits) {
    watch(_parser.get());
    XML_SetElementHandler(_parser.get(), startElement, endElement);
}

DocumentParser& DocumentParser::of(void* userData) {
    return static_cast<DocumentParser&>(*static_cast<Declarations*>(userData));
}

void DocumentParser::startElement(void* userData, const XML_Char* name,
                                  const XML_Char** attributes) {
    DocumentParser& self = of(userData);
    ++self._depth;
    if (self._parser.position() >= self._bytes.replacedEnd()) {
        self.report(name, attributes);
    }
    if (!self._root) {
        self._root = Root{name, self._parser.positionAfter()};
        if (self._pausesAtRoot && !self._thrown) {
            XML_StopParser(self._parser.get(), XML_TRUE);
        }
    }
}

void DocumentParser::report(const XML_Char* name, const XML_Char** attributes) {
    try {
        _delegate.didStartElement(name, XMLAttributes(attributes));
    } catch (...) {
        // Exceptions must not pass through expat, which is written in C.
        _thrown = std::current_exception();
        XML_SetElementHandler(_parser.get(), nullptr, nullptr);
        XML_StopParser(_parser.get(), XML_FALSE);
    }
}

void DocumentParser::endElement(void* userData, const XML_Char* /*name*/) {
    DocumentParser& self = of(userData);
    if (--self._depth == 0 && self._root) {
        self._goodAfterRoot = self._parser.positionAfter();
        self._root->isEmpty = self._goodAfterRoot == self._root->end;
        XML_SetDefaultHandler(self._parser.get(), afterRoot);
    }
}

/// The handler of comments, processing instructions and white space after the root.
void DocumentParser::afterRoot(void* userData, const XML_Char* /*text*/, int /*length*/) {
    DocumentParser& self = of(userData);
    self._goodAfterRoot = self._parser.positionAfter();
}

std::optional<XMLError> DocumentParser::readProlog() {
    _pausesAtRoot = true;
    return read();
}

std::optional<XMLError> DocumentParser::read() {
    const std::optional<XMLError> error = _parser.read();
    if (_thrown) {
        std::rethrow_exception(_thrown);
    }
    return error ? std::optional(placed(*error)) : std::nullopt;
}

/// Converts an error in the patched bytes to the error in the file.
XMLError DocumentParser::placed(XMLError error) const {
    if (nestTooDeeply()) {
        error.reason = XMLErrorReason::entityNesting;
    }
    // Text after the root is an error at its first byte. Expat may report another offset or another
    // reason, depending on the end of the text and on the size of the blocks.
    const std::error_code junk = XMLErrorReason::junkAfterRoot;
    if (_goodAfterRoot && error.reason.category() == junk.category() &&
        !isMarkup(*_goodAfterRoot)) {
        error = {*_goodAfterRoot, junk};
    }
    return {_bytes.fileOffset(error.byteOffset), error.reason};
}

/// Whether there is a "<" at `offset`.
bool DocumentParser::isMarkup(std::uint64_t offset) const {
    const CodeUnits units = codeUnits(_bytes);
    std::array<char, 2> begin{};
    std::error_code asIfTheFileEnded;
    _bytes.read(offset, begin, asIfTheFileEnded);
    switch (units) {
    case CodeUnits::utf16BigEndian:
        return begin[0] == '\0' && begin[1] == '<';
    case CodeUnits::utf16LittleEndian:
        return begin[0] == '<' && begin[1] == '\0';
    case CodeUnits::bytes:
        break;
    }
    return begin[0] == '<';
}

}  // namespace ambulet
