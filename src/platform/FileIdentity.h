#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace ambulet {

/// What tells a file from other files, also after it was moved. Any thread.
struct FileIdentity {
    struct Time {
        std::int64_t seconds;
        std::uint32_t nanoseconds;
        friend bool operator==(const Time&, const Time&) = default;
    };

    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::optional<Time> birth = std::nullopt;  ///< none where the file system keeps none
    std::string name = {};                     ///< the last part of its path
    std::optional<std::uint64_t> size = std::nullopt;

    /// The identity of the regular file at the path, through links; none where there is none.
    /// Opens nothing.
    static std::optional<FileIdentity> ofFile(const std::string& path);

    /// The file system that the folder is on; none where there is no such folder.
    static std::optional<std::uint64_t> deviceOfFolder(const std::string& path);

    /// Whether both are the same file. Inode numbers are used again, and device numbers change.
    /// - With a birth time: inode and birth time are equal.
    /// - Without: device, inode, name and size are equal. Another file system may be mounted where
    ///   the old one was, with another file under the same numbers.
    bool isSameFileAs(const FileIdentity& other) const;
};

}  // namespace ambulet
