#pragma once

#include "import/fast/FastMarkup.h"
#include "import/fast/FastNames.h"

#include <optional>
#include <string>
#include <string_view>

namespace ambulet {

/// The strict grammar of the fast road: what it accepts is well-formed in every XML 1.0 document in
/// UTF-8 without declared entities, and it refuses much that is well-formed too (names beyond
/// ASCII, names without number). It needs FastBytes::padding null
/// characters after the last byte, which it refuses like all that may not be there.
namespace FastGrammar {

/// The markup from the closing quote of an attribute's value up to and with the opening quote of
/// the next one; or up to a "<" in content, after much markup or from `stop` on. None where it is
/// not accepted.
std::optional<FastMarkup> afterValue(FastVocabulary& names, const char* at, const char* stop);

/// The same from a place in the content of an element on.
std::optional<FastMarkup> inContent(FastVocabulary& names, const char* at, const char* stop);

/// The end of the attribute value that begins at `at`: its closing quote. Null where it is not
/// accepted.
const char* valueEnd(const char* at, char quote);

/// An accepted value as it is reported: references resolved, white space normalised.
std::string decoded(std::string_view value);

}  // namespace FastGrammar

}  // namespace ambulet
