#pragma once

#include <chrono>
#include <vector>

namespace makeexport {

/// The ten years that every export tells of, whatever its size: calendar days, wherever the person
/// was on them.
inline constexpr std::chrono::local_days firstDay =
    std::chrono::local_days(std::chrono::year(2015) / std::chrono::October / 1);
inline constexpr std::chrono::local_days lastDay =
    std::chrono::local_days(std::chrono::year(2025) / std::chrono::September / 30);

/// When the export was made, on the clocks at home.
inline constexpr std::chrono::local_seconds exportTime =
    lastDay + std::chrono::days(1) + std::chrono::hours(8) + std::chrono::seconds(1812);

/// All that is dated in an export lies between these two, in any time zone.
inline constexpr std::chrono::sys_days periodBegin =
    std::chrono::sys_days(firstDay.time_since_epoch()) - std::chrono::days(2);
inline constexpr std::chrono::sys_days periodEnd =
    std::chrono::sys_days(lastDay.time_since_epoch()) + std::chrono::days(3);

/// The days of the period from `first` on.
inline std::vector<std::chrono::local_days> daysOfPeriod(std::chrono::local_days first = firstDay) {
    std::vector<std::chrono::local_days> days;
    for (std::chrono::local_days day = first; day <= lastDay; day += std::chrono::days(1)) {
        days.push_back(day);
    }
    return days;
}

}  // namespace makeexport
