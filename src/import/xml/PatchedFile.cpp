#include "import/xml/PatchedFile.h"

#include <algorithm>
#include <utility>

namespace ambulet {

void PatchedFile::replace(ByteRange range, std::string text) {
    const std::uint64_t passed = _patches.empty() ? 0 : _patches.back().range.end;
    _patches.push_back({replacedEnd() + (range.begin - passed), range, std::move(text)});
}

std::size_t PatchedFile::read(std::uint64_t offset, std::span<char> buffer,
                              std::error_code& error) const {
    std::uint64_t wanted = buffer.size();
    for (const Patch& patch : _patches) {
        if (offset < patch.begin) {
            wanted = std::min<std::uint64_t>(wanted, patch.begin - offset);
            break;
        }
        if (offset < patch.end()) {
            error.clear();
            return patch.text.copy(buffer.data(), buffer.size(),
                                   static_cast<std::size_t>(offset - patch.begin));
        }
    }
    return _file.read(fileOffset(offset), buffer.first(static_cast<std::size_t>(wanted)), error);
}

std::uint64_t PatchedFile::fileOffset(std::uint64_t offset) const {
    std::uint64_t result = offset;
    for (const Patch& patch : _patches) {
        if (offset < patch.begin) {
            break;
        }
        result = patch.range.end + (std::max(offset, patch.end()) - patch.end());
    }
    return result;
}

std::uint64_t PatchedFile::replacedEnd() const {
    return _patches.empty() ? 0 : _patches.back().end();
}

}  // namespace ambulet
