#pragma once

#include "makeexport/Clock.h"

#include <string>

namespace makeexport {

/// The declarations of an export, which its elements are valid against, or, in `Short`, only their
/// comment.
enum class Declarations { Short, Full };

/// All that stands before the first record: the XML declaration, the document type declaration and
/// the start of the root with ExportDate and Me.
std::string prolog(Declarations declarations, const Clock& clock);

}  // namespace makeexport
