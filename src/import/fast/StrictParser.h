#pragma once

#include "import/fast/NameTable.h"
#include "import/fast/Piece.h"

#include <optional>

namespace ambulet {

/// Verifies markup byte by byte. Accepted markup is well-formed in every XML 1.0 document in UTF-8
/// without declared entities. Some well-formed markup is refused, such as non-ASCII names, and
/// names that do not fit into the table.
///
/// 32 null characters must follow the last byte. They are refused, because XML does not allow them.
namespace StrictParser {

/// Parses markup. It starts at `at`, the closing quote of a value, and ends after the opening quote
/// of the next value, or before a "<" in content that is at or after `stop` or follows much markup
/// (over 4,096 bytes, or eight elements opened or closed). Nothing if it is refused.
std::optional<Markup> afterValue(Names& names, const char* at, const char* stop);

/// Like `afterValue`, but `at` is in the content of an element.
std::optional<Markup> inContent(Names& names, const char* at, const char* stop);

/// The end of the value at `at`: its closing quote, or the first byte that is refused.
const char* valueEnd(const char* at, char quote);

}  // namespace StrictParser

}  // namespace ambulet
