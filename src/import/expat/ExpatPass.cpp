#include "import/expat/ExpatPass.h"

#include "import/expat/Doctype.h"
#include "import/expat/IcuEncoding.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <strings.h>

namespace ambulet {

namespace {

// Of one that is read for its own sake, in bytes. Whoever reads a longer one does it twice.
constexpr std::uint64_t longestProlog = std::uint64_t{1024} * 1024;

int XMLCALL openNothing(XML_Parser /*parser*/, const XML_Char* /*context*/,
                        const XML_Char* /*base*/, const XML_Char* /*systemId*/,
                        const XML_Char* /*publicId*/) {
    return XML_STATUS_OK;
}

}  // namespace

ExpatPass::ExpatPass(const PatchedFile& bytes, XMLReaderDelegate& delegate, std::size_t blockSize,
                     ExpatReader::Limits limits)
    : _bytes(bytes), _delegate(delegate), _blockSize(blockSize), _limits(limits),
      _memory(limits.kept),
      _parser(XML_ParserCreate_MM(nullptr, ExpatMemory::functions(), nullptr), XML_ParserFree) {
    if (_parser == nullptr) {
        throw std::bad_alloc();
    }
    XML_SetUserData(_parser.get(), this);
    XML_SetElementHandler(_parser.get(), startElement, endElement);
    XML_SetEndDoctypeDeclHandler(_parser.get(), endDoctype);
    XML_SetUnknownEncodingHandler(_parser.get(), useIcuEncoding, nullptr);
    XML_SetExternalEntityRefHandler(_parser.get(), openNothing);
    XML_SetParamEntityParsing(_parser.get(), XML_PARAM_ENTITY_PARSING_UNLESS_STANDALONE);
#ifdef EXPAT_DEFERS_REPARSING
    // Expat would put off unfinished tokens on its own, by block size; see nextCount.
    XML_SetReparseDeferralEnabled(_parser.get(), XML_FALSE);
#endif
}

/// Where the token begins that is being reported.
std::uint64_t ExpatPass::position() const {
    const auto index = XML_GetCurrentByteIndex(_parser.get());
    return index < 0 ? 0 : static_cast<std::uint64_t>(index);
}

/// Where it ends.
std::uint64_t ExpatPass::positionAfter() const {
    return position() + static_cast<std::uint64_t>(XML_GetCurrentByteCount(_parser.get()));
}

void ExpatPass::startElement(void* pass, const XML_Char* name, const XML_Char** attributes) {
    auto& self = *static_cast<ExpatPass*>(pass);
    self._rootStarted = true;
    ++self._depth;
    if (self.position() < self._bytes.replacedEnd()) {
        return;
    }
    try {
        self._delegate.didStartElement(name, XMLAttributes(attributes));
    } catch (...) {
        // It may not pass through expat's frames.
        self._thrown = std::current_exception();
    }
    if (self._prolog != nullptr) {
        self.endProlog(name);
    }
    if (self._thrown || self._prolog != nullptr) {
        XML_SetElementHandler(self._parser.get(), nullptr, nullptr);
        XML_StopParser(self._parser.get(), XML_FALSE);
    }
}

void ExpatPass::endProlog(const char* rootName) {
    _prolog->rootName = rootName;
    _prolog->end = positionAfter();
}

void ExpatPass::endElement(void* pass, const XML_Char* /*name*/) {
    auto& self = *static_cast<ExpatPass*>(pass);
    if (--self._depth == 0) {
        self._goodAfterRoot = self.positionAfter();
        XML_SetDefaultHandler(self._parser.get(), afterRoot);
    }
}

/// Of the comments and the like that may follow the root element.
void ExpatPass::afterRoot(void* pass, const XML_Char* /*text*/, int /*length*/) {
    auto& self = *static_cast<ExpatPass*>(pass);
    self._goodAfterRoot = self.positionAfter();
}

void ExpatPass::endDoctype(void* pass) {
    static_cast<ExpatPass*>(pass)->_doctypeEnded = true;
}

/// The number of bytes given to the parser that it has not understood yet.
std::size_t ExpatPass::unfinished() {
    _tokenBegin = std::max(_tokenBegin, position());
    return static_cast<std::size_t>(_given - _tokenBegin);
}

/// The number of bytes to give the parser next; 0 where a token is beyond the limit.
///
/// Expat keeps the bytes of an unfinished token and looks at them again with every block. A long
/// one gets as much again as there is of it, so that the work grows with its length and not with
/// the square of that; and never more than the limit leaves, so that a token is refused at the same
/// byte for every block size.
std::size_t ExpatPass::nextCount(std::size_t unfinished) const {
    constexpr std::size_t longToken = 4096;
    const std::size_t count =
        unfinished < longToken ? _blockSize : std::max(_blockSize, unfinished);
    return std::min(count, _limits.token - unfinished);
}

/// The room to ask expat for, of `count` bytes or more. After a very long token it is all that any
/// token may need, at once: each time that the room grows, the token is there twice. Expat rounds
/// it up to a power of two. Nearly all of that is asked for, and ever again: then it moves what is
/// unfinished to the beginning each time, and never uses more of the room than a token needs.
std::size_t ExpatPass::nextRoom(std::size_t unfinished, std::size_t count) {
    constexpr std::size_t veryLongToken = std::size_t{1024} * 1024;
    constexpr std::size_t margin = 4096;  // expat keeps some bytes before those that are unfinished
    _hasLargeRoom = _hasLargeRoom || unfinished >= veryLongToken;
    return _hasLargeRoom ? std::bit_ceil(_limits.token) - margin - unfinished : count;
}

/// Room for so many bytes more. The limit of a token is that of the buffer, too.
void* ExpatPass::room(std::size_t count) {
    const ExpatMemory::Uncounted uncounted;
    return XML_GetBuffer(_parser.get(), static_cast<int>(count));
}

XMLError ExpatPass::parserError() const {
    const XML_Error code = XML_GetErrorCode(_parser.get());
    const auto index = XML_GetCurrentByteIndex(_parser.get());
    const std::uint64_t offset = index < 0 ? _given : static_cast<std::uint64_t>(index);
    if (code == XML_ERROR_INVALID_TOKEN && _goodAfterRoot && !isMarkup(*_goodAfterRoot)) {
        // By how much of a word came in one block, expat stops at its end or at its beginning.
        return {_bytes.fileOffset(*_goodAfterRoot),
                XML_ErrorString(XML_ERROR_JUNK_AFTER_DOC_ELEMENT)};
    }
    return {_bytes.fileOffset(offset), XML_ErrorString(code)};
}

/// Whether a "<" stands there, in UTF-8 or UTF-16.
bool ExpatPass::isMarkup(std::uint64_t offset) const {
    std::array<char, 2> begin{};
    std::error_code asIfTheFileEnded;
    _bytes.read(offset, begin, asIfTheFileEnded);
    return begin[0] == '<' || (begin[0] == '\0' && begin[1] == '<');
}

std::optional<XMLError> ExpatPass::run() {
    for (;;) {
        const std::size_t unfinished = this->unfinished();
        const std::size_t wanted = nextCount(unfinished);
        if (_prolog != nullptr && _given >= longestProlog) {
            _prolog->isPlain = false;
            return std::nullopt;
        }
        if (wanted == 0) {
            return XMLError{_bytes.fileOffset(_tokenBegin), "token too long"};
        }
        void* const buffer = room(nextRoom(unfinished, wanted));
        if (buffer == nullptr) {
            return parserError();
        }
        std::error_code error;
        const std::size_t count = _bytes.read(_given, {static_cast<char*>(buffer), wanted}, error);
        if (error) {
            return XMLError{_bytes.fileOffset(_given), error.message()};
        }
        _given += count;
        const bool isEnd = count == 0;
        const XML_Status status = XML_ParseBuffer(_parser.get(), static_cast<int>(count), isEnd);
        if (_thrown) {
            std::rethrow_exception(_thrown);
        }
        if (status == XML_STATUS_ERROR) {
            return parserError();
        }
        if (isEnd) {
            return std::nullopt;
        }
    }
}

std::optional<XMLError> ExpatPass::readProlog(Prolog& prolog) {
    _prolog = &prolog;
    watchProlog();
    const std::optional<XMLError> error = run();
    return _rootStarted ? std::nullopt : error;
}

bool ExpatPass::leaveOutDoctype(PatchedFile& bytes, const InputFile& file,
                                const XMLError& error) const {
    if (_doctypeEnded || _rootStarted) {
        return false;
    }
    const std::optional<ByteRange> doctype = findDoctype(file);
    if (!doctype || doctype->begin > error.byteOffset) {
        return false;
    }
    bytes.replace(*doctype, "");
    return true;
}

void ExpatPass::watchProlog() {
    XML_SetXmlDeclHandler(_parser.get(), [](void* pass, const XML_Char* version,
                                            const XML_Char* encoding, int /*standalone*/) {
        static_cast<ExpatPass*>(pass)->_prolog->isPlain &=
            version != nullptr && std::strcmp(version, "1.0") == 0 &&
            (encoding == nullptr || strcasecmp(encoding, "UTF-8") == 0);
    });
    XML_SetStartDoctypeDeclHandler(
        _parser.get(), [](void* pass, const XML_Char* /*name*/, const XML_Char* systemId,
                          const XML_Char* publicId, int /*hasInternalSubset*/) {
            static_cast<ExpatPass*>(pass)->_prolog->isPlain &=
                systemId == nullptr && publicId == nullptr;
        });
    XML_SetEntityDeclHandler(_parser.get(),
                             [](void* pass, const XML_Char* /*name*/, int /*isParameter*/,
                                const XML_Char* /*value*/, int /*length*/, const XML_Char* /*base*/,
                                const XML_Char* /*systemId*/, const XML_Char* /*publicId*/,
                                const XML_Char* /*notation*/) {
                                 static_cast<ExpatPass*>(pass)->_prolog->isPlain = false;
                             });
    XML_SetAttlistDeclHandler(_parser.get(), [](void* pass, const XML_Char* /*element*/,
                                                const XML_Char* /*attribute*/, const XML_Char* type,
                                                const XML_Char* value, int /*isRequired*/) {
        static_cast<ExpatPass*>(pass)->_prolog->isPlain &=
            value == nullptr && std::strcmp(type, "CDATA") == 0;
    });
}

}  // namespace ambulet
