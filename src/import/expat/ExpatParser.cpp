#include "import/expat/ExpatParser.h"

#include "import/expat/ExpatError.h"
#include "import/expat/IcuEncoding.h"

#include <algorithm>
#include <bit>
#include <new>
#include <span>

namespace ambulet {

namespace {

int XMLCALL openNothing(XML_Parser /*parser*/, const XML_Char* /*context*/,
                        const XML_Char* /*base*/, const XML_Char* /*systemId*/,
                        const XML_Char* /*publicId*/) {
    return XML_STATUS_OK;
}

// Newer versions of expat have the first two functions, and deprecate the others.
#ifdef EXPAT_HAS_64_BIT_POSITIONS
constexpr auto currentByteIndex = XML_GetCurrentByteIndex64;
constexpr auto currentByteCount = XML_GetCurrentByteCount64;
#else
constexpr auto currentByteIndex = XML_GetCurrentByteIndex;
constexpr auto currentByteCount = XML_GetCurrentByteCount;
#endif

// Expat's defaults. Entities may expand the document to a hundred times its size. The first eight
// mebibytes are exempt.
constexpr float mostAmplification = 100;
constexpr unsigned long long amplificationThreshold = 8ULL * 1024 * 1024;

}  // namespace

ExpatParser::ExpatParser(const PatchedFile& bytes, std::size_t blockSize, ExpatLimits limits)
    : _bytes(bytes), _blockSize(blockSize), _limits(limits), _memory(limits.kept),
      _parser(XML_ParserCreate_MM(nullptr, ExpatMemory::functions(), nullptr), XML_ParserFree) {
    if (_parser == nullptr) {
        throw std::bad_alloc();
    }
    XML_SetUnknownEncodingHandler(get(), useIcuEncoding, nullptr);
    XML_SetExternalEntityRefHandler(get(), openNothing);
    XML_SetParamEntityParsing(get(), XML_PARAM_ENTITY_PARSING_UNLESS_STANDALONE);
    XML_SetBillionLaughsAttackProtectionMaximumAmplification(get(), mostAmplification);
    XML_SetBillionLaughsAttackProtectionActivationThreshold(get(), amplificationThreshold);
#ifdef EXPAT_DEFERS_REPARSING
    // Expat's own delay of incomplete tokens depends on the size of the blocks. nextCount replaces
    // that delay.
    XML_SetReparseDeferralEnabled(get(), XML_FALSE);
#endif
}

std::optional<XMLError> ExpatParser::read() {
    if (isSuspended()) {
        if (auto error = errorOf(XML_ResumeParser(get()))) {
            return error;
        }
    }
    while (!_isAtEnd && !isSuspended()) {
        if (auto error = readBlock()) {
            return error;
        }
    }
    return std::nullopt;
}

std::optional<XMLError> ExpatParser::readBlock() {
    const std::size_t unfinished = this->unfinished();
    const std::size_t wanted = nextCount(unfinished);
    if (wanted == 0) {
        return XMLError{_tokenBegin, XMLErrorReason::tokenTooLong};
    }
    void* const buffer = room(unfinished);
    if (buffer == nullptr) {
        return errorOf(XML_STATUS_ERROR);
    }
    const std::span<char> block(static_cast<char*>(buffer), wanted);
    std::error_code error;
    std::size_t count = _bytes.read(_given, block, error);
    if (_given == 0 && count == 1 && !error) {
        // Expat detects UTF-16 by the first two bytes, which must come in the same call.
        count += _bytes.read(1, block.subspan(1), error);
    }
    if (error) {
        return XMLError{_given, error};
    }
    _given += count;
    _isAtEnd = count == 0;
    return errorOf(XML_ParseBuffer(get(), static_cast<int>(count), _isAtEnd ? 1 : 0));
}

std::optional<XMLError> ExpatParser::errorOf(XML_Status status) const {
    if (status != XML_STATUS_ERROR) {
        return std::nullopt;
    }
    const auto index = currentByteIndex(get());
    return XMLError{index < 0 ? _given : static_cast<std::uint64_t>(index),
                    errorReason(XML_GetErrorCode(get()))};
}

std::uint64_t ExpatParser::position() const {
    const auto index = currentByteIndex(get());
    return index < 0 ? 0 : static_cast<std::uint64_t>(index);
}

std::uint64_t ExpatParser::positionAfter() const {
    return position() + static_cast<std::uint64_t>(currentByteCount(get()));
}

bool ExpatParser::isSuspended() const {
    XML_ParsingStatus status{};
    XML_GetParsingStatus(get(), &status);
    return status.parsing == XML_SUSPENDED;
}

/// The number of bytes that have been passed to the parser and are not parsed yet.
std::size_t ExpatParser::unfinished() {
    _tokenBegin = std::max(_tokenBegin, position());
    return static_cast<std::size_t>(_given - _tokenBegin);
}

/// The number of bytes to pass to the parser next; 0 if an incomplete token has reached the limit.
///
/// Expat stores the bytes of an incomplete token and scans them again with every block. So for a
/// long token the number is at least the length of the token so far: then the work is proportional
/// to the length, not to its square. The number never exceeds the rest of the limit, so that a
/// token is refused at the same byte for every block size.
std::size_t ExpatParser::nextCount(std::size_t unfinished) const {
    constexpr std::size_t longToken = 4096;  // eight times the longest token of exports
    const std::size_t firstCount = _given == 0 ? 2 : 0;
    const std::size_t count =
        unfinished < longToken ? _blockSize : std::max(_blockSize, unfinished);
    return std::min(std::max(count, firstCount), _limits.token - unfinished);
}

/// A buffer for at least as many bytes as a token may still have.
///
/// Expat would start with a small buffer and double it when necessary, which copies a long token.
/// So expat is asked for a buffer of the maximum size each time. Then its buffer is never too
/// small, and expat only moves the incomplete token to the start of the buffer. The system
/// allocates only pages that are written to, which are those of a block and a token.
void* ExpatParser::room(std::size_t unfinished) {
    constexpr std::size_t margin = 4096;  // expat keeps up to 1024 bytes before the token
    const std::size_t size = std::bit_ceil(_limits.token + margin) - margin - unfinished;
    const ExpatMemory::Uncounted uncounted;
    return XML_GetBuffer(get(), static_cast<int>(size));
}

}  // namespace ambulet
