#pragma once

#include <random>
#include <string>

namespace ambulet {

/// Damages `bytes` in one to three random places: changes a byte, inserts a piece of markup or
/// text, cuts off the end, or removes, doubles, moves or encloses a span.
std::string mutated(std::string bytes, std::minstd_rand& chance);

}  // namespace ambulet
