#pragma once

#include "import/xml/PatchedFile.h"

#include <optional>

namespace ambulet {

/// Where the document type declaration of `file` stands, well-formed or not: from "<!DOCTYPE" to
/// the first "]>" outside quotes and comments, or up to the start tag of the root element that it
/// names. None where the document has no such declaration, or no such end can be found. In UTF-16
/// and in every encoding that has ASCII in it.
std::optional<ByteRange> findDoctype(const InputFile& file);

}  // namespace ambulet
