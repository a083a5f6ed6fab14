#pragma once

#include <random>
#include <string>

namespace ambulet {

/// Damages `bytes` in a few random places: changes bytes; removes or doubles spans, or puts them
/// into comments, CDATA sections or processing instructions; inserts pieces of markup.
std::string mutated(std::string bytes, std::minstd_rand& chance);

}  // namespace ambulet
