#pragma once

#include "import/expat/ExpatReader.h"
#include "import/steps/StepSums.h"
#include "import/xml/XMLReaderDelegate.h"

#include <cstddef>
#include <optional>

namespace ambulet {

class InputFile;

/// Sums the step records of an export. The days and the first error are the same as with
/// ExpatReader, but ExportReader is many times faster.
///
/// Expat decides what is well-formed, and reads the prolog. If the prolog is plain (see
/// ExpatDocument), the fast reader continues as long as it can verify every byte, and expat reads
/// the rest. Otherwise expat reads the whole file.
class ExportReader {
  public:
    struct Options {
        /// The number of threads, including the calling one. More than 4 count as 4. With 1 the
        /// file is read in order.
        unsigned threads = 1;

        /// The sizes, in bytes, of the blocks that are read in order (by expat at most
        /// ExpatReader::defaultBlockSize), and of the chunks that several threads read. From 1 byte
        /// to 8 MiB. They make no difference to the result, except that expat may run out of memory
        /// a few tags earlier or later. The system copies a cached file more slowly into a smaller
        /// buffer (256 KiB: 1.5 times the time, 512 KiB: 1.2 times), and hardly faster into a
        /// larger one.
        std::size_t blockSize = std::size_t{1024} * 1024;
        std::size_t chunkSize = std::size_t{1024} * 1024;
    };

    /// The number of cores of the machine, but at most 4; 1 if it is unknown.
    static unsigned usualThreads();

    explicit ExportReader(Options options) : _options(options) {}

    /// Adds the step records of `file` to `sums`. `delegate` gets the start tags that expat reads,
    /// and must add the step records among them to `sums`. If expat has to read the whole file
    /// again, the sums are first reset to those before the call, and the delegate gets all start
    /// tags again. Returns the first error, as ExpatReader does; the records before it have been
    /// added.
    std::optional<XMLError> read(const InputFile& file, XMLReaderDelegate& delegate,
                                 StepSums& sums) const;

  private:
    bool readByBoth(const InputFile& file, XMLReaderDelegate& delegate, StepSums& sums,
                    std::optional<XMLError>& error) const;

    Options _options;
};

}  // namespace ambulet
