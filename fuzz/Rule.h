#pragma once

#include <cstdio>
#include <cstdlib>

namespace ambulet {

/// If `holds` is false, prints `rule` and aborts the program.
inline void require(bool holds, const char* rule) {
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", rule);
        std::abort();
    }
}

}  // namespace ambulet
