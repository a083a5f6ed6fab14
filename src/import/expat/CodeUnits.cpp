#include "import/expat/CodeUnits.h"

#include <array>
#include <system_error>

namespace ambulet {

// Without a byte order mark, expat recognises UTF-16 by a null byte: a document starts with an
// ASCII character, so in UTF-16 one of its first two bytes is null.

CodeUnits codeUnits(const PatchedFile& bytes) {
    std::array<char, 2> begin{};
    std::error_code asIfTheFileEnded;
    if (bytes.read(0, begin, asIfTheFileEnded) < begin.size()) {
        return CodeUnits::bytes;
    }
    const bool isBigEndian = (begin[0] == '\xFE' && begin[1] == '\xFF') || begin[0] == '\0';
    const bool isLittleEndian = (begin[0] == '\xFF' && begin[1] == '\xFE') || begin[1] == '\0';
    return isBigEndian      ? CodeUnits::utf16BigEndian
           : isLittleEndian ? CodeUnits::utf16LittleEndian
                            : CodeUnits::bytes;
}

}  // namespace ambulet
