#pragma once

#include "import/expat/DocumentParser.h"
#include "import/expat/ExpatLimits.h"
#include "import/xml/PatchedFile.h"
#include "import/xml/XMLReader.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace ambulet {

/// What another reader must know of a document to go on after its prolog.
struct PlainProlog {
    std::string rootName;
    std::uint64_t end = 0;  // of the root's start tag, in the file

    friend bool operator==(const PlainProlog&, const PlainProlog&) = default;
};

/// One reading of the document in a file by expat, which can leave a part to another reader:
///
///     ExpatDocument document(file, delegate, blockSize);
///     const auto prolog = document.readPlainProlog();
///     error = prolog ? document.readFrom(…) : document.read();
///
/// A malformed document type declaration passes by as ExpatReader says.
///
/// For one reading, on one thread.
class ExpatDocument {
  public:
    ExpatDocument(const InputFile& file, XMLReaderDelegate& delegate, std::size_t blockSize,
                  ExpatLimits limits = {});

    /// Reads up to the end of the root's start tag, which is reported. None where another reader
    /// may not go on from there:
    /// - there is an error before it;
    /// - the document is not plain: XML 1.0 in UTF-8 whose prolog declares nothing that makes a
    ///   difference to what a start tag holds (see Declarations);
    /// - the root is empty, or the prolog is so long that expat should not read it twice.
    /// The first operation. The memory of expat has been freed where it returns a prolog.
    std::optional<PlainProlog> readPlainProlog();

    /// Reads on to the end, or to the first error. The first operation, or after a readPlainProlog
    /// that returned none.
    std::optional<XMLError> read();

    /// Reads from byte `position` of the file on to the end, or to the first error, as if
    /// `startTags` were all that stands between the root's start tag and that place. Expat may keep
    /// `reserve` bytes less than the limit. After a readPlainProlog that returned a prolog.
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
    std::optional<XMLError> _error;  // in the prolog
    std::uint64_t _prologEnd = 0;    // in the file, where it is plain
};

}  // namespace ambulet
