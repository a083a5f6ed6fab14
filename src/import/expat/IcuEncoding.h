#pragma once

#include <expat.h>

namespace ambulet {

/// An XML_UnknownEncodingHandler: gives expat a converter of ICU for an encoding that expat lacks.
/// The converter supports characters of one byte, and of two bytes if the first determines how
/// many. All other characters are invalid tokens. The encoding stays unknown if ICU lacks it, too,
/// or if it is not a superset of ASCII.
int useIcuEncoding(void* unused, const XML_Char* name, XML_Encoding* encoding);

}  // namespace ambulet
