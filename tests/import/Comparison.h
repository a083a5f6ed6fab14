#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace ambulet {

/// Reads the file at `path` by expat in blocks of the usual size, and in some other ways, picked by
/// chance: by expat in other blocks; by ExportReader in several blocks and chunks, on one thread
/// and on several. How they differ from the first; empty if they do not. Small files are read in
/// blocks of some bytes, too.
std::string compareWays(const std::filesystem::path& path, std::minstd_rand& chance);

}  // namespace ambulet
