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

/// The path of the file with this identity in or below the folders; nothing if the file is not
/// found within the limits. Searches breadth first. Skips links and hidden folders unless `folders`
/// lists them, and every folder on a file system other than `device`. Blocks if the file system
/// hangs. Any thread.
std::optional<std::string> findFile(const FileIdentity& identity,
                                    const std::vector<std::string>& folders, std::uint64_t device,
                                    const SearchBounds& bounds = {});

}  // namespace ambulet
