#pragma once

#include "import/xml/PatchedFile.h"

namespace ambulet {

/// What a document's code units are: bytes, in UTF-8 and every other encoding that has ASCII in it;
/// or pairs of bytes.
enum class CodeUnits { bytes, utf16BigEndian, utf16LittleEndian };

/// Those of the document `bytes`, as expat tells them from the first two bytes, with or without a
/// byte order mark. An encoding declaration never changes them.
CodeUnits codeUnits(const PatchedFile& bytes);

}  // namespace ambulet
