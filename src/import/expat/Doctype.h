#pragma once

#include "import/xml/PatchedFile.h"

#include <optional>

namespace ambulet {

/// The range of the document type declaration of `file`, which need not be well-formed: from
/// "<!DOCTYPE" to the first "]>" outside quotes and comments, or to the start tag of the root
/// element that it names. Nothing if there is no declaration, or its end is not found. Works in
/// UTF-16 and in every superset of ASCII.
std::optional<ByteRange> findDoctype(const InputFile& file);

}  // namespace ambulet
