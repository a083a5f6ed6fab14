#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace ambulet {

class InputFile;

/// A block of a file in memory, with null characters behind it, and room for bytes that are carried
/// over in front of it. The block is aligned to 4096 bytes: reading to other places took a quarter
/// more time. One thread at a time.
class InputBuffer {
  public:
    /// For `before` bytes that are carried over, `size` bytes that are read, and `padding` null
    /// characters. Throws std::bad_alloc.
    InputBuffer(std::size_t before, std::size_t size, std::size_t padding);

    /// Where the block begins.
    char* begin() const { return _begin; }

    /// Reads `size` bytes of `file` from `offset` on, or as many as there are, and returns how many
    /// there are. An error in reading ends the file.
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
