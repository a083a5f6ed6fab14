#pragma once

#include <string>
#include <vector>

namespace ambulet {

/// Small well-formed exports: some like those of phones, some with rare XML constructs.
const std::vector<std::string>& sampleExports();

}  // namespace ambulet
