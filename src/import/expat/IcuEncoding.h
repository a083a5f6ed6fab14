#pragma once

#include <expat.h>

namespace ambulet {

/// Lends expat one of ICU's converters for an encoding that expat lacks: an
/// XML_UnknownEncodingHandler. It knows the encodings of which every character is one byte, or one
/// or two where the first tells; any other is an unknown encoding.
int useIcuEncoding(void* unused, const XML_Char* name, XML_Encoding* encoding);

}  // namespace ambulet
