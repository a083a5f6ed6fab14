#pragma once

#include "import/xml/XMLError.h"

#include <expat.h>

namespace ambulet {

/// Why a parser stopped that has ended with `error`.
XMLErrorReason errorReason(XML_Error error);

}  // namespace ambulet
