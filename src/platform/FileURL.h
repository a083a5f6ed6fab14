#pragma once

#include <QString>

#include <memory>
#include <string>
#include <utility>

namespace ambulet {

/// The path of a file. On macOS, a FileURL from a bookmark also has the system's URL, which
/// includes the right to open the file. A plain value; its copies may be used on any thread.
struct FileURL {
    /// The file at a path that is given as text. U+FFFD in the text may stand for bytes that are
    /// not UTF-8: if no file has exactly this path, the file is the first, by name, whose path
    /// decodes to the text. Accesses the file system only if the text contains U+FFFD.
    FileURL(const QString& text);

    explicit FileURL(std::string bytes, std::shared_ptr<const void> systemURL = nullptr)
        : path(std::move(bytes)), system(std::move(systemURL)) {}

    std::string path;  ///< in the encoding of the file system, which need not be UTF-8
    std::shared_ptr<const void> system;  ///< on macOS the CFURL from a bookmark; otherwise null
};

}  // namespace ambulet
