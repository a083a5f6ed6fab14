#pragma once

#include "import/xml/InputFile.h"

#include <cstdint>
#include <span>
#include <string>
#include <system_error>
#include <vector>

namespace ambulet {

/// A range of a file, from byte `begin` to just before byte `end`.
struct ByteRange {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
};

/// The bytes of a file, with some ranges replaced by other text. Unless stated otherwise, an offset
/// is one in the patched bytes. Any number of threads may read at the same time.
class PatchedFile {
  public:
    explicit PatchedFile(const InputFile& file) : _file(file) {}

    /// Replaces `range` of the file by `text`. The range must not begin before the end of a range
    /// that was replaced earlier.
    void replace(ByteRange range, std::string text);

    /// Like InputFile::read, but a call stops at the start and at the end of a replacement.
    std::size_t read(std::uint64_t offset, std::span<char> buffer, std::error_code& error) const;

    /// The offset in the file of the byte at `offset`. For a byte of a replacement, the end of the
    /// range that was replaced.
    std::uint64_t fileOffset(std::uint64_t offset) const;

    /// The end of the last replacement; 0 if nothing is replaced.
    std::uint64_t replacedEnd() const;

  private:
    struct Patch {
        std::uint64_t begin;  // the offset of `text` in the patched bytes
        ByteRange range;
        std::string text;

        std::uint64_t end() const { return begin + text.size(); }
    };

    const InputFile& _file;
    std::vector<Patch> _patches;
};

}  // namespace ambulet
