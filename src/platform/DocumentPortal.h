#pragma once

#include <optional>
#include <string>

namespace ambulet {

/// If a document portal gave the file to a sandboxed program, the file's path outside the sandbox,
/// in the encoding of the file system. Empty for every other file, and on macOS. Accesses the file
/// system. Any thread.
std::optional<std::string> hostPathOfFile(const std::string& path);

}  // namespace ambulet
