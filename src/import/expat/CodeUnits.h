#pragma once

#include "import/xml/PatchedFile.h"

namespace ambulet {

/// The code units of a document: single bytes (in UTF-8 and every other superset of ASCII) or pairs
/// of bytes (in UTF-16).
enum class CodeUnits { bytes, utf16BigEndian, utf16LittleEndian };

/// The code units of the document `bytes`. Like expat, determines them from the first two bytes. A
/// byte order mark is not necessary, and an encoding declaration makes no difference.
CodeUnits codeUnits(const PatchedFile& bytes);

}  // namespace ambulet
