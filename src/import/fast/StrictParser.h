#pragma once

#include "import/fast/NameTable.h"
#include "import/fast/Piece.h"

#include <optional>
#include <string>
#include <string_view>

namespace ambulet {

/// Verifies markup byte by byte. What it accepts is well-formed in every XML 1.0 document in UTF-8
/// without declared entities. It refuses some that is well-formed, too: names beyond ASCII, names
/// that the table has no room for.
///
/// 32 null characters must follow the last byte. They are refused, as they may not stand in a
/// document.
namespace StrictParser {

/// The markup from the closing quote of a value at `at` up to and with the opening quote of the
/// next one; or up to a "<" in content, from `stop` on or after much markup. None where it is
/// refused.
std::optional<Markup> afterValue(Names& names, const char* at, const char* stop);

/// The same from a place in the content of an element on.
std::optional<Markup> inContent(Names& names, const char* at, const char* stop);

/// Where the value at `at` ends: at its closing quote, or at the first byte that is refused.
const char* valueEnd(const char* at, char quote);

/// An accepted value as it is reported: references are resolved, white space is normalised.
std::string decoded(std::string_view value);

}  // namespace StrictParser

}  // namespace ambulet
