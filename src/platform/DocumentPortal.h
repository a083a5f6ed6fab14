#pragma once

#include <optional>
#include <string>

namespace ambulet {

/// The path outside the sandbox of a file that a document portal gave to a sandboxed program, in
/// the file name's own bytes. Empty for every other file, and on macOS. Accesses the file system.
/// Any thread.
std::optional<std::string> hostPathOfFile(const std::string& path);

}  // namespace ambulet
