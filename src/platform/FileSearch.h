#pragma once

#include "platform/FileIdentity.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace ambulet {

/// Where a search that has found nothing ends.
struct SearchBounds {
    int entries = 200'000;
    std::chrono::milliseconds time{2000};
};

/// The path of the file with this identity: in one of the folders or at any depth below them, least
/// depth first. Hidden folders, links to folders and other file systems than `device` are left out.
/// May take as long as the bounds say, and longer where the file system hangs. Any thread.
std::optional<std::string> findFile(const FileIdentity& identity,
                                    const std::vector<std::string>& folders, std::uint64_t device,
                                    const SearchBounds& bounds = {});

}  // namespace ambulet
