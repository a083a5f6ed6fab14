#pragma once

#include "import/steps/StepSums.h"
#include "text/LocalTime.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace ambulet {

/// The size of the blocks in which the peers read a file, except for peer_qt.
constexpr std::size_t blockSize = std::size_t{256} * 1024;

/// Opens the file that is the only argument. If that fails, ends the program with status 2.
inline std::FILE* openedFile(int argc, char** argv) {
    std::FILE* const file = argc == 2 ? std::fopen(argv[1], "rb") : nullptr;
    if (file == nullptr) {
        std::exit(2);
    }
    return file;
}

/// Prints the days as stepdays does.
inline void printDays(const StepSums& sums) {
    for (const DailySteps& day : sums.days()) {
        const std::chrono::year_month_day date = localDate(day.date().value());
        std::printf("%04d-%02u-%02u\t%lld\n", static_cast<int>(date.year()),
                    static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                    static_cast<long long>(day.steps()));
    }
}

}  // namespace ambulet
