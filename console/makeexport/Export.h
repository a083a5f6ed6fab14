#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>

namespace makeexport {

class StepSums;

/// The local days that an export of any size covers.
constexpr std::chrono::local_days firstDay =
    std::chrono::local_days(std::chrono::year(2015) / std::chrono::October / 1);
constexpr std::chrono::local_days lastDay =
    std::chrono::local_days(std::chrono::year(2025) / std::chrono::September / 30);

/// Writes an export of about `size` bytes to `file` and adds its step records to `sums`. The same
/// seed and size give the same bytes. If a write fails, returns false and sets errno.
bool writeExport(std::uint64_t seed, std::uint64_t size, std::FILE* file, StepSums& sums);

}  // namespace makeexport
