#pragma once

#include "makeexport/Random.h"

#include <chrono>
#include <string>

namespace makeexport {

/// One ActivitySummary. All are of one length, so that with them at its end a file comes to a size
/// that is known beforehand.
void appendActivitySummary(std::string& text, std::chrono::local_days day, Random& random);

std::size_t activitySummaryLength();

}  // namespace makeexport
