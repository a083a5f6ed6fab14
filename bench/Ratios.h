#pragma once

#include <vector>

namespace ambulet {

/// How many times `other`'s time `base` takes. Both are names of benchmarks of the same run.
struct Ratio {
    const char* text;
    const char* other;
    const char* base;
};

/// Runs the program's benchmarks as the command line has it, five times in turns where it says
/// nothing else; prints medians and spreads, and then the ratios of the median CPU times.
int runBenchmarks(int argc, char** argv, const std::vector<Ratio>& ratios);

}  // namespace ambulet
