#pragma once

#include <vector>

namespace ambulet {

/// The time of `other` divided by the time of `base`. Both are names of benchmarks of the same run.
struct Ratio {
    const char* text;
    const char* other;
    const char* base;
};

/// Runs the program's benchmarks with the options of the command line; by default five times,
/// interleaved. Prints medians and spreads, then the ratios of the median CPU times.
int runBenchmarks(int argc, char** argv, const std::vector<Ratio>& ratios);

}  // namespace ambulet
