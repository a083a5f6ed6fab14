#pragma once

#include "import/fast/TagScanner.h"
#include "import/steps/StepSums.h"

#include <cstddef>
#include <cstdint>

namespace ambulet {

class InputFile;

/// A boundary in a file (see TagScanner).
struct ScanPlace {
    std::uint64_t offset = 0;
    TagScanner::ElementNames open;  // the open elements, the root first
};

/// Scans a part of a file for step records, as long as it can verify that the file is well-formed.
struct FileScan {
    /// The number of threads, including the calling one; fewer if the system has no more. With 1
    /// the file is read in order.
    unsigned threads = 1;

    /// The sizes, in bytes, of the blocks that are read in order, and of the chunks that a thread
    /// reads. From 1 byte to 8 MiB. They make no difference to the result.
    std::size_t blockSize;
    std::size_t chunkSize;

    /// The limit of the bytes of all long tags (TagScanner::longTag) together.
    std::uint64_t mostLongTagBytes = ~std::uint64_t{0};

    /// Scans `file`, starting at `start`, and returns the boundary at which it stopped. Adds
    /// exactly the step records before that boundary to `sums`. A read error counts as the end of
    /// the file. If a thread runs out of memory, the calling one reads the rest. Throws
    /// std::bad_alloc if it runs out of memory, too, or if any thread does while it adds sums.
    ScanPlace scan(const InputFile& file, ScanPlace start, StepSums& sums) const;
};

}  // namespace ambulet
