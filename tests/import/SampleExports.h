#pragma once

#include <string>
#include <vector>

namespace ambulet {

/// Small well-formed exports. Together they contain everything that a reader must handle.
const std::vector<std::string>& sampleExports();

}  // namespace ambulet
