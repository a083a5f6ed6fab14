#pragma once

#include "import/expat/ExpatLimits.h"
#include "import/xml/XMLReader.h"

#include <cstddef>
#include <optional>

namespace ambulet {

class InputFile;

/// Reads XML documents through expat, which says what is well-formed. Namespaces are not looked at;
/// internal entities are expanded; nothing outside the file is ever opened.
///
/// A document type declaration that is malformed passes by as if it were not there, if its end can
/// be found.
///
/// Memory is bounded, whatever the file holds; so is the stack.
class ExpatReader {
  public:
    using Limits = ExpatLimits;

    static constexpr std::size_t defaultBlockSize = std::size_t{256} * 1024;

    /// `blockSize` is the number of bytes, 1 or more, that are read from the file at once. It makes
    /// no difference to what is read.
    explicit ExpatReader(std::size_t blockSize = defaultBlockSize, Limits limits = {})
        : _blockSize(blockSize), _limits(limits) {}

    /// Reports the start tags of the document in `file` to `delegate`. Nothing where the document
    /// is well-formed, else the first error; the tags before it have been reported.
    std::optional<XMLError> read(const InputFile& file, XMLReaderDelegate& delegate) const;

  private:
    std::size_t _blockSize;
    Limits _limits;
};

}  // namespace ambulet
