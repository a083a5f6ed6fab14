#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace ambulet {

/// What tells a file from every other, under whatever name it goes.
struct FileIdentity {
    struct Time {
        std::int64_t seconds;
        std::uint32_t nanoseconds;
        friend bool operator==(const Time&, const Time&) = default;
    };

    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::optional<Time> birth;  ///< none where the file system keeps none

    /// Of the regular file at the path, through links; none where there is none. Opens nothing.
    static std::optional<FileIdentity> ofFile(const QString& path);

    /// Of the file system that the folder lies on; none where there is no such folder.
    static std::optional<std::uint64_t> deviceOfFolder(const QString& path);

    /// Whether the two are of one file. Inode numbers are used again, so the birth time counts; the
    /// device counts only without one, as device numbers may change with a restart.
    bool isSameFileAs(const FileIdentity& other) const;
};

}  // namespace ambulet
