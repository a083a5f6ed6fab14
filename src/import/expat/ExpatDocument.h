#pragma once

#include "import/expat/DocumentParser.h"
#include "import/expat/ExpatLimits.h"
#include "import/xml/PatchedFile.h"
#include "import/xml/XMLReaderDelegate.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace ambulet {

/// What another reader needs to continue after the prolog. Here the prolog includes the root's
/// start tag.
struct PlainProlog {
    std::string rootName;
    std::uint64_t end = 0;  // the end of that tag, as an offset in the file

    friend bool operator==(const PlainProlog&, const PlainProlog&) = default;
};

/// Reads the document in a file with expat. Another reader can read a part of the document:
///
///     ExpatDocument document(file, delegate, blockSize);
///     const auto prolog = document.readPlainProlog();
///     error = prolog ? document.readFrom(…) : document.read();
///
/// A document type declaration with an error is ignored, as described at ExpatReader. An object
/// reads once, on one thread.
class ExpatDocument {
  public:
    ExpatDocument(const InputFile& file, XMLReaderDelegate& delegate, std::size_t blockSize,
                  ExpatLimits limits = {});

    /// Reads to the end of the root's start tag, which is reported. Must be the first operation. If
    /// the result is a prolog, another reader can continue after that, and expat's memory has been
    /// freed. The result is nothing if
    /// - there is an error in the prolog,
    /// - its declarations are not plain (see Declarations), or the document is in UTF-16,
    /// - the root's start tag is an empty-element tag, or
    /// - the prolog is longer than 64 KiB, because `readFrom` reads it a second time.
    std::optional<PlainProlog> readPlainProlog();

    /// Reads to the end, or to the first error. Must be the first operation, or follow a
    /// readPlainProlog that returned nothing.
    std::optional<XMLError> read();

    /// Reads from byte `position` of the file to the end, or to the first error. `startTags`
    /// replace everything between the root's start tag and `position`, and are not reported. The
    /// limit ExpatLimits::kept is lowered by `reserve`, which must be less than the limit. Must
    /// follow a readPlainProlog that returned a prolog.
    std::optional<XMLError> readFrom(std::uint64_t position, std::string startTags,
                                     std::size_t reserve);

  private:
    std::optional<XMLError> readProlog();
    void start(ExpatLimits limits);

    const InputFile& _file;
    PatchedFile _bytes;
    XMLReaderDelegate& _delegate;
    std::size_t _blockSize;
    ExpatLimits _limits;
    std::unique_ptr<DocumentParser> _parser;
    std::optional<XMLError> _error;  // an error in the prolog
    std::uint64_t _prologEnd = 0;    // the end of a plain prolog, as an offset in the file
};

}  // namespace ambulet
