#pragma once

#include "import/xml/PatchedFile.h"

#include <optional>

namespace ambulet {

/// The range of the document type declaration of `file`, even if it is malformed. It begins with
/// "<!DOCTYPE". It ends after the first "]>" outside quotes, comments and processing instructions,
/// or before the start tag of the root element that it names, whichever comes first. Nothing if
/// there is no declaration, or its end is not found. Works in UTF-16 and in every superset of
/// ASCII.
std::optional<ByteRange> findDoctype(const InputFile& file);

}  // namespace ambulet
