#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace ambulet {

class InputFile;

/// A block of a file in memory. There are null characters after it, and space before it for bytes
/// that are carried over from the previous block. The block is aligned to 4096 bytes, because
/// reading to other addresses took a quarter longer. One thread at a time.
class InputBuffer {
  public:
    /// Allocates `before` bytes for carrying over, `size` bytes for reading, and `padding` null
    /// characters. Throws std::bad_alloc.
    InputBuffer(std::size_t before, std::size_t size, std::size_t padding);

    /// The start of the block.
    char* begin() const { return _begin; }

    /// Reads `size` bytes of `file`, starting at `offset`, and writes the null characters after
    /// them. Returns the number of bytes, which is below `size` only at the end of the file. A read
    /// error counts as the end of the file.
    std::size_t read(const InputFile& file, std::uint64_t offset, std::size_t size) const;

  private:
    struct Free {
        void operator()(char* bytes) const;
    };

    std::unique_ptr<char, Free> _bytes;
    char* _begin;
    std::size_t _padding;
};

}  // namespace ambulet
