#pragma once

#include <random>
#include <string>

namespace ambulet {

/// Spoils `bytes` in a few places, as chance has it: bytes changed, spans left out, doubled or
/// moved into comments, CDATA sections or processing instructions, pieces of markup put in.
std::string mutated(std::string bytes, std::minstd_rand& chance);

}  // namespace ambulet
