#pragma once

#include "import/expat/ExpatLimits.h"
#include "import/xml/XMLReaderDelegate.h"

#include <cstddef>
#include <optional>

namespace ambulet {

class InputFile;

/// Reads XML documents with expat, which decides what is well-formed.
/// - Namespaces are not processed.
/// - Internal entities are expanded. External ones are never opened.
/// - A document type declaration that has an error or exceeds a limit is ignored if its end can be
///   found, unless its entities may be nested too deeply.
/// - The use of memory and stack is bounded for every file.
class ExpatReader {
  public:
    using Limits = ExpatLimits;

    /// A block of this size fits into the cache of a core.
    static constexpr std::size_t defaultBlockSize = std::size_t{256} * 1024;

    /// `blockSize`: the number of bytes that are read at once, except within long tokens; at least
    /// 1. It makes no difference to the result, except that memory may run out a few tags earlier
    /// or later.
    explicit ExpatReader(std::size_t blockSize = defaultBlockSize, Limits limits = {})
        : _blockSize(blockSize), _limits(limits) {}

    /// Reports the start tags of the document in `file` to `delegate`. Returns the first error, if
    /// the document is not well-formed, exceeds a limit, or cannot be read to the end. The tags
    /// before the error have been reported.
    std::optional<XMLError> read(const InputFile& file, XMLReaderDelegate& delegate) const;

  private:
    std::size_t _blockSize;
    Limits _limits;
};

}  // namespace ambulet
