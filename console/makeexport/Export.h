#pragma once

#include "makeexport/Output.h"
#include "makeexport/StepSums.h"

#include <cstdint>

namespace makeexport {

inline constexpr std::uint64_t smallestExport = std::uint64_t{1} << 10;
inline constexpr std::uint64_t largestExport = std::uint64_t{8} << 30;

/// Writes an export of ten years as a phone makes it, up to and with its last byte.
///
/// `size`: in bytes, from smallestExport to largestExport. The export is never longer, and less
/// than the length of an ActivitySummary shorter: but an export of under 64 KiB, which has the
/// short declarations, may be shorter by the length of a step record. The same seed and size give
/// the same bytes, always and everywhere. Every step record written is added to `sums`. Where the
/// output fails it ends early; see `out.error()`.
void writeExport(std::uint64_t seed, std::uint64_t size, Output& out, StepSums& sums);

}  // namespace makeexport
