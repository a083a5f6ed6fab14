#include "import/ExpatReader.h"

#include "import/Doctype.h"
#include "import/ExpatMemory.h"
#include "import/InputFile.h"
#include "import/UnknownEncoding.h"

#include <expat.h>

#include <algorithm>
#include <exception>
#include <memory>
#include <type_traits>

namespace {

using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)>;

/// One reading of a file from its beginning, with some of its bytes left out.
class Pass {
  public:
    Pass(const InputFile& file, XMLReaderDelegate& delegate, std::size_t blockSize,
         ExpatReader::Limits limits, ByteRange leftOut);

    std::optional<XMLError> run();

    /// What was reached says that an error lies before the root element and not after a document
    /// type declaration.
    bool endedInProlog() const { return !_doctypeEnded && !_rootStarted; }

  private:
    static void XMLCALL startElement(void* pass, const XML_Char* name, const XML_Char** attributes);
    static void XMLCALL endDoctype(void* pass);

    std::size_t nextCount();
    std::uint64_t fileOffset(std::uint64_t offset) const;
    XMLError parserError() const;

    const InputFile& _file;
    XMLReaderDelegate& _delegate;
    std::size_t _blockSize;
    ExpatReader::Limits _limits;
    ByteRange _leftOut;

    ExpatMemory _memory;
    Parser _parser;
    std::uint64_t _given = 0;       // bytes given to the parser
    std::uint64_t _tokenBegin = 0;  // of which those from here on are still to be understood
    bool _doctypeEnded = false;
    bool _rootStarted = false;
    std::exception_ptr _thrown;  // by the delegate
};

int XMLCALL openNothing(XML_Parser /*parser*/, const XML_Char* /*context*/,
                        const XML_Char* /*base*/, const XML_Char* /*systemId*/,
                        const XML_Char* /*publicId*/) {
    return XML_STATUS_OK;
}

Pass::Pass(const InputFile& file, XMLReaderDelegate& delegate, std::size_t blockSize,
           ExpatReader::Limits limits, ByteRange leftOut)
    : _file(file), _delegate(delegate), _blockSize(blockSize), _limits(limits), _leftOut(leftOut),
      _memory(limits.memory),
      _parser(XML_ParserCreate_MM(nullptr, ExpatMemory::functions(), nullptr), XML_ParserFree) {
    if (_parser == nullptr) {
        throw std::bad_alloc();
    }
    XML_SetUserData(_parser.get(), this);
    XML_SetStartElementHandler(_parser.get(), startElement);
    XML_SetEndDoctypeDeclHandler(_parser.get(), endDoctype);
    XML_SetUnknownEncodingHandler(_parser.get(), useIcuEncoding, nullptr);
    XML_SetExternalEntityRefHandler(_parser.get(), openNothing);
    XML_SetParamEntityParsing(_parser.get(), XML_PARAM_ENTITY_PARSING_UNLESS_STANDALONE);
#ifdef EXPAT_DEFERS_REPARSING
    // Expat would put off unfinished tokens on its own, by block size; see nextCount.
    XML_SetReparseDeferralEnabled(_parser.get(), XML_FALSE);
#endif
}

void Pass::startElement(void* pass, const XML_Char* name, const XML_Char** attributes) {
    auto& self = *static_cast<Pass*>(pass);
    self._rootStarted = true;
    try {
        self._delegate.didStartElement(name, XMLAttributes(attributes));
    } catch (...) {
        // It may not pass through expat's frames.
        self._thrown = std::current_exception();
        XML_SetStartElementHandler(self._parser.get(), nullptr);
        XML_StopParser(self._parser.get(), XML_FALSE);
    }
}

void Pass::endDoctype(void* pass) {
    static_cast<Pass*>(pass)->_doctypeEnded = true;
}

/// The number of bytes to give the parser next; 0 where a token is beyond the limit.
///
/// Expat keeps the bytes of an unfinished token and looks at them again with every block. A long
/// one gets as much again as there is of it, so that the work grows with its length and not with
/// the square of that; and never more than the limit leaves, so that a token is refused at the same
/// byte for every block size.
std::size_t Pass::nextCount() {
    constexpr std::size_t longToken = 4096;
    const auto index = XML_GetCurrentByteIndex(_parser.get());
    _tokenBegin = std::max(_tokenBegin, static_cast<std::uint64_t>(std::max<XML_Index>(index, 0)));
    const std::size_t unfinished = static_cast<std::size_t>(_given - _tokenBegin);
    std::size_t count = unfinished < longToken ? _blockSize : std::max(_blockSize, unfinished);
    if (_given < _leftOut.begin) {
        count = static_cast<std::size_t>(std::min<std::uint64_t>(count, _leftOut.begin - _given));
    }
    return std::min(count, _limits.token - unfinished);
}

/// Of a byte counted without those left out.
std::uint64_t Pass::fileOffset(std::uint64_t offset) const {
    return offset < _leftOut.begin ? offset : offset + (_leftOut.end - _leftOut.begin);
}

XMLError Pass::parserError() const {
    const XML_Error code = XML_GetErrorCode(_parser.get());
    const auto index = XML_GetCurrentByteIndex(_parser.get());
    const std::uint64_t offset = index < 0 ? _given : static_cast<std::uint64_t>(index);
    return {fileOffset(offset), XML_ErrorString(code)};
}

std::optional<XMLError> Pass::run() {
    for (;;) {
        const std::size_t wanted = nextCount();
        if (wanted == 0) {
            return XMLError{fileOffset(_tokenBegin), "token too long"};
        }
        void* buffer = XML_GetBuffer(_parser.get(), static_cast<int>(wanted));
        if (buffer == nullptr) {
            return parserError();
        }
        std::error_code error;
        const std::size_t count =
            _file.read(fileOffset(_given), {static_cast<char*>(buffer), wanted}, error);
        if (error) {
            return XMLError{fileOffset(_given), error.message()};
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

}  // namespace

std::optional<XMLError> ExpatReader::read(const InputFile& file,
                                          XMLReaderDelegate& delegate) const {
    Pass pass(file, delegate, _blockSize, _limits, {});
    std::optional<XMLError> error = pass.run();
    if (error && pass.endedInProlog()) {
        const std::optional<ByteRange> doctype = findDoctype(file);
        if (doctype && doctype->begin <= error->byteOffset) {
            return Pass(file, delegate, _blockSize, _limits, *doctype).run();
        }
    }
    return error;
}
