#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace ambulet {

/// Small exports, well-formed, that have among them all that a reader must know.
const std::vector<std::string>& sampleExports();

/// Spoils `bytes` in a few places, as chance has it: bytes changed, spans left out, doubled or
/// moved into comments, CDATA sections or processing instructions, pieces of markup put in.
std::string mutated(std::string bytes, std::minstd_rand& chance);

}  // namespace ambulet
