#include "import/expat/ExpatDocument.h"

#include "import/expat/CodeUnits.h"
#include "import/expat/Doctype.h"

#include <utility>

namespace ambulet {

namespace {

// In bytes. In readFrom, expat reads the prolog a second time, which must not take noticeable time.
constexpr std::uint64_t longestPlainProlog = std::uint64_t{64} * 1024;

}  // namespace

ExpatDocument::ExpatDocument(const InputFile& file, XMLReaderDelegate& delegate,
                             std::size_t blockSize, ExpatLimits limits)
    : _file(file), _bytes(file), _delegate(delegate), _blockSize(blockSize), _limits(limits) {}

void ExpatDocument::start(ExpatLimits limits) {
    _parser.reset();  // so that two parsers do not use memory at the same time
    _parser = std::make_unique<DocumentParser>(_bytes, _delegate, _blockSize, limits);
}

/// Reads to the end of the root's start tag. Leaves out a document type declaration with an error.
std::optional<XMLError> ExpatDocument::readProlog() {
    start(_limits);
    const std::optional<XMLError> error = _parser->readProlog();
    const Declarations& declarations = _parser->declarations();
    if (!error || _parser->root() || declarations.haveEnded() || declarations.nestTooDeeply()) {
        return error;
    }
    const std::optional<ByteRange> doctype = findDoctype(_file);
    if (!doctype || doctype->begin > error->byteOffset) {
        return error;
    }
    _bytes.replace(*doctype, "");
    start(_limits);
    return _parser->readProlog();
}

std::optional<PlainProlog> ExpatDocument::readPlainProlog() {
    _error = readProlog();
    const std::optional<DocumentParser::Root> root = _parser->root();
    if (_error || !root || root->isEmpty || root->end > longestPlainProlog ||
        !_parser->declarations().arePlain() || codeUnits(_bytes) != CodeUnits::bytes) {
        return std::nullopt;
    }
    _parser.reset();
    _prologEnd = _bytes.fileOffset(root->end);
    return PlainProlog{root->name, _prologEnd};
}

std::optional<XMLError> ExpatDocument::read() {
    if (_parser == nullptr) {
        _error = readProlog();
    }
    return _error ? _error : _parser->read();
}

std::optional<XMLError> ExpatDocument::readFrom(std::uint64_t position, std::string startTags,
                                                std::size_t reserve) {
    _bytes.replace({_prologEnd, position}, std::move(startTags));
    ExpatLimits limits = _limits;
    limits.kept -= reserve;
    start(limits);
    return _parser->read();
}

}  // namespace ambulet
