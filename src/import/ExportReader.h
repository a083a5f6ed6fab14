#pragma once

#include "import/expat/ExpatReader.h"
#include "import/steps/StepSums.h"
#include "import/xml/XMLReader.h"

#include <cstddef>
#include <optional>

namespace ambulet {

class ExpatDocument;
class InputFile;
struct PlainProlog;

/// Adds up the step records of an export, many times faster than ExpatReader does, and with the
/// same result for every file: the same days, and the same first error.
///
/// Expat decides what is well-formed. It reads the prolog. Where that is plain, the fast reader
/// goes on as far as it can verify every byte, and hands over to expat, which reads the rest. Where
/// it is not, expat reads the whole file.
class ExportReader {
  public:
    struct Options {
        /// At once, the calling one among them. With one the file is read in order.
        unsigned threads = 1;

        /// Bytes that are read at once in order; and that a thread reads at once. Neither makes a
        /// difference to what is read.
        std::size_t blockSize = ExpatReader::defaultBlockSize;
        std::size_t chunkSize = std::size_t{512} * 1024;
    };

    /// As many threads as the machine has cores, and at most 4.
    static unsigned usualThreads();

    explicit ExportReader(Options options) : _options(options) {}

    /// Adds the step records of `file` to `sums`: by itself those that the fast reader finds, and
    /// by `delegate` the others. `delegate` is told start tags, and adds the step records among
    /// them to `sums`. Nothing where the document is well-formed, else the first error; the records
    /// before it have been added.
    std::optional<XMLError> read(const InputFile& file, XMLReaderDelegate& delegate,
                                 StepSums& sums) const;

  private:
    std::optional<XMLError> readFast(ExpatDocument& document, const PlainProlog& prolog,
                                     const InputFile& file, StepSums& sums) const;

    Options _options;
};

}  // namespace ambulet
