#pragma once

#include "import/fast/TagScanner.h"
#include "import/steps/StepSums.h"

#include <cstddef>
#include <cstdint>

namespace ambulet {

class InputFile;

/// A boundary (see TagScanner) in a file.
struct ScanPlace {
    std::uint64_t offset = 0;
    TagScanner::ElementNames open;  // the elements that are open there, the root first
};

/// Scans a file from a place on, for step records, as far as it can be verified to be well-formed.
struct FileScan {
    /// Threads at once, the calling one among them. Fewer where the system has no more. One thread
    /// reads the file in order.
    unsigned threads = 1;

    /// Bytes that are read at once in order; and that a thread reads at once. Up to 8 MiB, they
    /// make no difference to the result.
    std::size_t blockSize = std::size_t{256} * 1024;
    std::size_t chunkSize = std::size_t{512} * 1024;

    /// The bytes that all long tags (TagScanner::longTag) may have together.
    std::uint64_t mostLongTagBytes = ~std::uint64_t{0};

    /// Scans `file` from `start` on, adds the step records to `sums`, and returns the place where
    /// it gave up. All step records before that place are added, and no others. An error in reading
    /// the file ends the scan like its end. Throws what a thread threw.
    ScanPlace scan(const InputFile& file, ScanPlace start, StepSums& sums) const;
};

}  // namespace ambulet
