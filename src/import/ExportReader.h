#pragma once

#include "import/expat/ExpatReader.h"
#include "import/steps/StepSums.h"
#include "import/xml/XMLReader.h"

#include <cstddef>
#include <optional>

namespace ambulet {

class InputFile;

/// Adds up the step records of an export with the same result as by ExpatReader, the same days and
/// the same first error, but many times faster.
///
/// Expat decides what is well-formed. It reads the prolog. Where that is plain, the fast reader
/// goes on as far as it can verify every byte, and hands over to expat, which reads the rest. Where
/// it is not, expat reads the whole file.
class ExportReader {
  public:
    struct Options {
        /// The threads that read at once, the calling one among them; 4 at most. With one the file
        /// is read in order.
        unsigned threads = 1;

        /// Bytes that are read at once in order; and that a thread reads at once. Up to 8 MiB, they
        /// make no difference to what is read.
        std::size_t blockSize = ExpatReader::defaultBlockSize;
        std::size_t chunkSize = std::size_t{512} * 1024;
    };

    /// As many threads as the machine has cores, and at most 4.
    static unsigned usualThreads();

    explicit ExportReader(Options options) : _options(options) {}

    /// Adds the step records of `file` to `sums`. `delegate` is told the start tags that expat
    /// reads, and must add the step records among them to `sums`. Returns nothing if the document
    /// is well-formed, else the first error; the records before it have been added.
    std::optional<XMLError> read(const InputFile& file, XMLReaderDelegate& delegate,
                                 StepSums& sums) const;

  private:
    bool readByBoth(const InputFile& file, XMLReaderDelegate& delegate, StepSums& sums,
                    std::optional<XMLError>& error) const;

    Options _options;
};

}  // namespace ambulet
