#pragma once

#include "import/xml/XMLError.h"

#include <expat.h>

namespace ambulet {

/// The reason for an error code of expat.
XMLErrorReason errorReason(XML_Error error);

}  // namespace ambulet
