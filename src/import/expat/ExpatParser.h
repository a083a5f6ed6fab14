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

/// An expat parser that is given a document block by block and is held to the limits. How much it
/// is given at once makes no difference to what it reports.
///
/// For one document, on one thread. Such parsers are destroyed in the reverse order of their
/// making.
class ExpatParser {
  public:
    /// `blockSize` is the number of bytes, 1 or more, that are read at once. Throws std::bad_alloc.
    ExpatParser(const PatchedFile& bytes, std::size_t blockSize, ExpatLimits limits);

    /// For handlers.
    XML_Parser get() const { return _parser.get(); }

    /// Reads on to the end of the document, to the first error, or until a handler suspends the
    /// parser. An error's offset is one in `bytes`.
    std::optional<XMLError> read();

    /// Where the token begins that is being reported, and where it ends.
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
    std::uint64_t _given = 0;       // bytes given to the parser
    std::uint64_t _tokenBegin = 0;  // of which those from here on are still to be understood
    bool _isAtEnd = false;
};

}  // namespace ambulet
