#pragma once

#include "platform/FileIdentity.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace ambulet {

/// The limits of a search.
struct SearchBounds {
    int entries = 200'000;
    std::chrono::milliseconds time{2000};
};

/// Searches the folders, and all folders below them, breadth first, for the file with this
/// identity. Returns its path; nothing if it is not found within the limits. Skips hidden folders,
/// links to folders, and file systems other than `device`. Blocks if the file system hangs. Any
/// thread.
std::optional<std::string> findFile(const FileIdentity& identity,
                                    const std::vector<std::string>& folders, std::uint64_t device,
                                    const SearchBounds& bounds = {});

}  // namespace ambulet
