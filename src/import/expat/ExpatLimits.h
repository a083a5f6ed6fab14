#pragma once

#include <cstddef>

namespace ambulet {

/// What bounds the memory that expat takes for a document, in bytes.
struct ExpatLimits {
    /// Of one tag, comment, processing instruction or literal of a declaration.
    std::size_t token = 10'000'000;

    /// Of all that expat keeps besides the bytes of that one token: the open elements, all names
    /// and declarations, the values of one tag.
    std::size_t kept = std::size_t{4} * 1024 * 1024;

    friend bool operator==(const ExpatLimits&, const ExpatLimits&) = default;
};

}  // namespace ambulet
