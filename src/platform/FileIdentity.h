#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace ambulet {

/// The properties that identify a file, even after it was moved. Any thread.
struct FileIdentity {
    struct Time {
        std::int64_t seconds;
        std::uint32_t nanoseconds;
        friend bool operator==(const Time&, const Time&) = default;
    };

    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::optional<Time> birth = std::nullopt;          ///< empty if the file system has none
    std::string name = {};                             ///< the last part of its path
    std::optional<std::uint64_t> size = std::nullopt;  ///< in bytes; empty if unknown

    /// The identity of the regular file at the path. Links are followed. Nothing if there is no
    /// regular file. Does not open the file.
    static std::optional<FileIdentity> ofFile(const std::string& path);

    /// The device number of the folder's file system. Nothing if there is no such folder.
    static std::optional<std::uint64_t> deviceOfFolder(const std::string& path);

    /// Whether both are the same file.
    /// - With a birth time: inode and birth time must be equal. The inode alone is not enough,
    ///   because inodes are reused. The device is not compared, because its number may change.
    /// - Without a birth time: device, inode, name and size must be equal. Device and inode are not
    ///   enough, because another file system may have been mounted under the same device number.
    bool isSameFileAs(const FileIdentity& other) const;
};

}  // namespace ambulet
