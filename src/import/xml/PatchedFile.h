#pragma once

#include "import/xml/InputFile.h"

#include <cstdint>
#include <span>
#include <string>
#include <system_error>
#include <vector>

namespace ambulet {

/// Bytes `begin` up to, and without, `end` of a file.
struct ByteRange {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
};

/// A file's bytes with other text in the place of some of them. Offsets are counted in what results
/// where nothing else is said. Any number of threads may read at once.
class PatchedFile {
  public:
    explicit PatchedFile(const InputFile& file) : _file(file) {}

    /// Puts `text` in the place of `range` of the file, which begins at or after the end of all
    /// ranges before.
    void replace(ByteRange range, std::string text);

    /// As InputFile::read, but it may stop short of the end at the edge of a replaced range.
    std::size_t read(std::uint64_t offset, std::span<char> buffer, std::error_code& error) const;

    /// Where the byte at `offset` stands in the file; of a replacing text, where its range ends.
    std::uint64_t fileOffset(std::uint64_t offset) const;

    /// Where the last replacing text ends, 0 where nothing is replaced.
    std::uint64_t replacedEnd() const;

  private:
    struct Patch {
        std::uint64_t begin;  // of the text
        ByteRange range;
        std::string text;

        std::uint64_t end() const { return begin + text.size(); }
    };

    const InputFile& _file;
    std::vector<Patch> _patches;
};

}  // namespace ambulet
