#pragma once

#include <optional>
#include <string>

namespace ambulet {

/// The path outside the sandbox of a file that a document portal gave to the sandboxed program, in
/// the encoding of the file system. Nothing for every other file, and on macOS. Accesses the file
/// system. Any thread.
std::optional<std::string> hostPathOfFile(const std::string& path);

}  // namespace ambulet
