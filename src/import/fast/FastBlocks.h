#pragma once

#include "import/fast/FastScanner.h"
#include "import/xml/InputFile.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace ambulet {

/// Takes a scanner through a file from block to block, in order.
class FastBlocks {
  public:
    FastBlocks(const InputFile& file, std::size_t blockSize);

    /// Reads on from `position`, where the scanner has been started, to the first place from `stop`
    /// on that is between two pieces of markup. Returns it; or the last such place before which all
    /// is verified, where the scanner, or reading the file, gets no further.
    std::uint64_t read(FastScanner& scanner, std::uint64_t position, std::uint64_t stop);

  private:
    const InputFile& _file;
    std::size_t _blockSize;
    std::unique_ptr<char[]> _bytes;
};

}  // namespace ambulet
