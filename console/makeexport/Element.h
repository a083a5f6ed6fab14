#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace makeexport {

/// What a step record tells a reader.
struct StepSample {
    std::chrono::sys_seconds start;
    std::int64_t steps;
};

/// A child of the root with its line feed, and the step records in it: what it says as text and
/// what it is known to mean.
struct Element {
    std::string text;
    std::vector<StepSample> steps;

    void clear() {
        text.clear();
        steps.clear();
    }
};

}  // namespace makeexport
