#include "import/xml/PatchedFile.h"

#include <algorithm>
#include <utility>

namespace ambulet {

void PatchedFile::replace(ByteRange range, std::string text) {
    const std::uint64_t passed = _pieces.empty() ? 0 : _pieces.back().range.end;
    _pieces.push_back({replacedEnd() + (range.begin - passed), range, std::move(text)});
}

std::size_t PatchedFile::read(std::uint64_t offset, std::span<char> buffer,
                              std::error_code& error) const {
    std::uint64_t wanted = buffer.size();
    for (const Piece& piece : _pieces) {
        if (offset < piece.begin) {
            wanted = std::min<std::uint64_t>(wanted, piece.begin - offset);
            break;
        }
        if (offset < piece.end()) {
            error.clear();
            return piece.text.copy(buffer.data(), buffer.size(),
                                   static_cast<std::size_t>(offset - piece.begin));
        }
    }
    return _file.read(fileOffset(offset), buffer.first(static_cast<std::size_t>(wanted)), error);
}

std::uint64_t PatchedFile::fileOffset(std::uint64_t offset) const {
    std::uint64_t result = offset;
    for (const Piece& piece : _pieces) {
        if (offset < piece.begin) {
            break;
        }
        result = piece.range.end + (std::max(offset, piece.end()) - piece.end());
    }
    return result;
}

std::uint64_t PatchedFile::replacedEnd() const {
    return _pieces.empty() ? 0 : _pieces.back().end();
}

}  // namespace ambulet
