#pragma once

#include <vector>

namespace ambulet {

/// The time of the benchmark named `other`, divided by that of the benchmark named `base`.
struct Ratio {
    const char* text;
    const char* other;
    const char* base;
};

/// Runs the program's benchmarks, by default five times, interleaved. Prints medians and spreads,
/// then the ratios of the median CPU times. Options of the command line are those of Google
/// Benchmark. Returns the exit status of the program.
int runBenchmarks(int argc, char** argv, const std::vector<Ratio>& ratios);

}  // namespace ambulet
