#include "Ratios.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

namespace ambulet {

namespace {

/// Prints like the console reporter, and stores the medians.
class MedianReporter : public benchmark::ConsoleReporter {
  public:
    MedianReporter() : ConsoleReporter(OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.aggregate_name == "median") {
                _seconds[run.run_name.function_name] = run.cpu_accumulated_time;
            }
        }
    }

    void print(const Ratio& ratio) const {
        const auto other = _seconds.find(ratio.other);
        const auto base = _seconds.find(ratio.base);
        if (other != _seconds.end() && base != _seconds.end()) {
            std::printf("%-60s %8.2f\n", ratio.text, other->second / base->second);
        }
    }

  private:
    std::map<std::string, double> _seconds;  // the key is the name of the benchmark
};

}  // namespace

int runBenchmarks(int argc, char** argv, const std::vector<Ratio>& ratios) {
    std::vector<std::string> words = {argv[0], "--benchmark_repetitions=5",
                                      "--benchmark_enable_random_interleaving=true",
                                      "--benchmark_report_aggregates_only=true"};
    words.insert(words.end(), argv + 1, argv + argc);
    std::vector<char*> arguments;
    arguments.reserve(words.size());
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return EXIT_FAILURE;
    }
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::puts("");
    for (const Ratio& ratio : ratios) {
        reporter.print(ratio);
    }
    return EXIT_SUCCESS;
}

}  // namespace ambulet
