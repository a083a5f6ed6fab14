#pragma once

#include <expat.h>

namespace ambulet {

/// An XML_UnknownEncodingHandler: gives expat a converter of ICU for an encoding that expat lacks.
/// It supports encodings with one byte for each character, and those with one or two bytes, if the
/// first byte determines how many. All others are unknown encodings.
int useIcuEncoding(void* unused, const XML_Char* name, XML_Encoding* encoding);

}  // namespace ambulet
