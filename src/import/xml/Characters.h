#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The characters of an XML 1.0 document in UTF-8. A null character must follow every text: it is
// malformed, so nothing is read beyond it.

namespace ambulet {

/// Whether a code unit is white space.
constexpr bool isWhiteSpace(int unit) {
    return unit == ' ' || unit == '\n' || unit == '\t' || unit == '\r';
}

/// Whether a code unit is an ASCII character with which a name may start.
constexpr bool isNameStart(int unit) {
    return ('a' <= unit && unit <= 'z') || ('A' <= unit && unit <= 'Z') || unit == '_' ||
           unit == ':';
}

/// Whether a code unit is an ASCII character that a name may contain.
constexpr bool isInName(int unit) {
    return isNameStart(unit) || ('0' <= unit && unit <= '9') || unit == '-' || unit == '.';
}

/// The number of bytes of the character at `at`; 0 if it is malformed or not allowed.
std::size_t characterSize(const char* at);

/// A reference to a character or to a predefined entity.
struct Reference {
    std::size_t size = 0;  // in bytes; 0 if there is no such reference
    std::uint32_t code = 0;
};

/// The reference that begins with the "&" at `at`.
Reference reference(const char* at);

/// The text of a well-formed attribute value, with references resolved and white space normalised.
std::string decodedValue(std::string_view value);

}  // namespace ambulet
