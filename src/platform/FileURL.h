#pragma once

#include <QString>

#include <memory>
#include <string>
#include <utility>

namespace ambulet {

/// The path of a file. On macOS, a FileURL from a bookmark also has the system's URL, which
/// includes the right to open the file. A plain value; its copies may be used on any thread.
struct FileURL {
    /// In a text that a path was decoded to, U+FFFD stands for bytes that are not UTF-8. Where
    /// there is no file of exactly that name, it is the first in its folder, by name, that is
    /// decoded so. To find it takes asking the file system; no other text does.
    FileURL(const QString& text);

    explicit FileURL(std::string bytes, std::shared_ptr<const void> systemURL = nullptr)
        : path(std::move(bytes)), system(std::move(systemURL)) {}

    std::string path;  ///< absolute; a file name's own bytes, which need not be UTF-8
    std::shared_ptr<const void> system;  ///< macOS, from a bookmark: the CFURL; elsewhere null
};

}  // namespace ambulet
