#include "platform/FileIdentity.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace ambulet {

namespace {

// The status of the file or folder at the path; nothing if there is none. Takes what a network file
// system has cached, if anything, and does not automount the path.
std::optional<struct statx> statusOf(const std::string& path, unsigned mask) {
    struct statx status = {};
    const int failed =
        ::statx(AT_FDCWD, path.c_str(), AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC, mask, &status);
    return failed != 0 ? std::nullopt : std::optional(status);
}

}  // namespace

std::optional<FileIdentity> FileIdentity::ofFile(const std::string& path) {
    const auto status = statusOf(path, STATX_TYPE | STATX_INO | STATX_SIZE | STATX_BTIME);
    if (!status || !S_ISREG(status->stx_mode)) {
        return std::nullopt;
    }
    FileIdentity identity;
    identity.device = makedev(status->stx_dev_major, status->stx_dev_minor);
    identity.inode = status->stx_ino;
    identity.name = std::filesystem::path(path).filename();
    identity.size = status->stx_size;
    if ((status->stx_mask & STATX_BTIME) != 0) {
        identity.birth = Time{status->stx_btime.tv_sec, status->stx_btime.tv_nsec};
    }
    return identity;
}

std::optional<std::uint64_t> FileIdentity::deviceOfFolder(const std::string& path) {
    const auto status = statusOf(path, STATX_TYPE);
    return status && S_ISDIR(status->stx_mode)
               ? std::optional<std::uint64_t>(makedev(status->stx_dev_major, status->stx_dev_minor))
               : std::nullopt;
}

bool FileIdentity::isSameFileAs(const FileIdentity& other) const {
    if (inode != other.inode || birth != other.birth) {
        return false;
    }
    return birth || (device == other.device && name == other.name && size && size == other.size);
}

}  // namespace ambulet
