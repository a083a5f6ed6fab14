#pragma once

#include <cstddef>

namespace ambulet {

/// The limits of the memory that expat uses for a document, in bytes. They keep the memory of
/// a load, without the days, below 16 MB. Exports have tags of less than a kilobyte and some 160
/// names.
struct ExpatLimits {
    /// The length of one tag, comment, processing instruction or literal in a declaration.
    std::size_t token = 10'000'000;

    /// Everything that expat stores except the bytes of such a token: the open elements, all names
    /// and declarations, and the values of one tag.
    std::size_t kept = std::size_t{4} * 1024 * 1024;

    friend bool operator==(const ExpatLimits&, const ExpatLimits&) = default;
};

}  // namespace ambulet
