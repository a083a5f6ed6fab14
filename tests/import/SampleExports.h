#pragma once

#include <string>
#include <vector>

namespace ambulet {

/// Small exports, well-formed, that have among them all that a reader must know.
const std::vector<std::string>& sampleExports();

}  // namespace ambulet
