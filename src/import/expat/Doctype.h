#pragma once

#include "import/xml/PatchedFile.h"

#include <optional>

namespace ambulet {

/// The range of the document type declaration of `file`, even of a malformed declaration. The range
/// begins with "<!DOCTYPE". It ends after the first "]>" outside quotes, comments and processing
/// instructions (there may be white space before the ">"), or before the start tag of the root
/// element that the declaration names, whichever comes first. If the declaration names no root, any
/// start tag ends the range. Nothing if there is no declaration, or its end is not found.
///
/// Works in UTF-16 and in every superset of ASCII.
std::optional<ByteRange> findDoctype(const InputFile& file);

}  // namespace ambulet
