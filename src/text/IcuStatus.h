#pragma once

#include <unicode/utypes.h>

#include <stdexcept>

namespace ambulet {

/// Throws std::runtime_error with ICU's name of the error if `status` is an error. For calls that
/// fail only if ICU's data is missing or memory has run out.
inline void orThrow(UErrorCode status) {
    if (U_FAILURE(status)) {
        throw std::runtime_error(u_errorName(status));
    }
}

}  // namespace ambulet
