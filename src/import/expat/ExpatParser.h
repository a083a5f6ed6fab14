#pragma once

#include "import/expat/ExpatLimits.h"
#include "import/expat/ExpatMemory.h"
#include "import/xml/PatchedFile.h"
#include "import/xml/XMLError.h"

#include <expat.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <type_traits>

namespace ambulet {

/// An expat parser that reads one document, on one thread, block by block and within the limits.
/// The size of the blocks makes no difference to the tags and the error that are reported, except
/// that memory may run out a few tags earlier or later.
///
/// The parsers of a thread must be destroyed in the reverse order of their construction.
class ExpatParser {
  public:
    /// `blockSize`: the number of bytes that are read at once, except within long tokens; at least
    /// 1. Throws std::bad_alloc.
    ExpatParser(const PatchedFile& bytes, std::size_t blockSize, ExpatLimits limits);

    /// For setting handlers, and for stopping the parser in a handler.
    XML_Parser get() const { return _parser.get(); }

    /// Reads to the end of the document, to the first error, or until a handler suspends the
    /// parser; in that case, another call continues. The offset of an error is one in `bytes`.
    std::optional<XMLError> read();

    /// The start and the end of the token that is being reported.
    std::uint64_t position() const;
    std::uint64_t positionAfter() const;

  private:
    bool isSuspended() const;
    std::optional<XMLError> readBlock();
    std::optional<XMLError> errorOf(XML_Status status) const;
    std::size_t unfinished();
    std::size_t nextCount(std::size_t unfinished) const;
    void* room(std::size_t unfinished);

    const PatchedFile& _bytes;
    std::size_t _blockSize;
    ExpatLimits _limits;

    ExpatMemory _memory;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> _parser;
    std::uint64_t _given = 0;       // number of bytes passed to the parser
    std::uint64_t _tokenBegin = 0;  // offset of the first byte that is not parsed yet
    bool _isAtEnd = false;
};

}  // namespace ambulet
