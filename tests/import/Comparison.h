#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace ambulet {

/// Reads the file at `path` with expat in blocks of the default size, and compares the result with
/// those of
/// - expat in blocks of a random size,
/// - ExportReader on one thread, and
/// - ExportReader with a random number of threads, and random sizes of blocks and chunks.
///
/// For small files, the random sizes may be a few bytes. Returns a description of the differences;
/// empty if there are none.
std::string compareWays(const std::filesystem::path& path, std::minstd_rand& chance);

}  // namespace ambulet
