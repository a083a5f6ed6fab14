#pragma once

#include <random>
#include <string>

namespace ambulet {

/// Damages `bytes` in a few random places: changes bytes, inserts pieces of markup, cuts off the
/// end, or removes, doubles or moves spans or encloses them in markup.
std::string mutated(std::string bytes, std::minstd_rand& chance);

}  // namespace ambulet
