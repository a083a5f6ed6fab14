#pragma once

#include <cstdio>
#include <cstdlib>

namespace ambulet {

/// Ends the program as a sanitizer does where `holds` is false.
inline void require(bool holds, const char* rule) {
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", rule);
        std::abort();
    }
}

}  // namespace ambulet
