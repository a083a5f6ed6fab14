#pragma once

#include <QString>

#include <memory>
#include <string>
#include <utility>

namespace ambulet {

/// The path of a file. On macOS, a FileURL from a bookmark also has the system's URL, which
/// includes the right to open the file. A plain value; its copies may be used on any thread.
struct FileURL {
    /// The file of a path that is known as text. In such a text, U+FFFD may replace bytes that are
    /// not UTF-8. If there is no file with exactly that name, the file is the first in the folder,
    /// by name, that decodes to the text. Accesses the file system only if the text contains
    /// U+FFFD.
    FileURL(const QString& text);

    explicit FileURL(std::string bytes, std::shared_ptr<const void> systemURL = nullptr)
        : path(std::move(bytes)), system(std::move(systemURL)) {}

    std::string path;  ///< in the encoding of the file system, which need not be UTF-8
    std::shared_ptr<const void> system;  ///< on macOS the CFURL from a bookmark; otherwise null
};

}  // namespace ambulet
