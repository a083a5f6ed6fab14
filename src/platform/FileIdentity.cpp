#include "platform/FileIdentity.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace ambulet {

namespace {

// Asks neither a server nor the automounter, so as not to wait for one.
std::optional<struct statx> statusOf(const QString& path, unsigned mask) {
    struct statx status = {};
    const int failed = ::statx(AT_FDCWD, QFile::encodeName(path).constData(),
                               AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC, mask, &status);
    return failed != 0 ? std::nullopt : std::optional(status);
}

}  // namespace

std::optional<FileIdentity> FileIdentity::ofFile(const QString& path) {
    const auto status = statusOf(path, STATX_TYPE | STATX_INO | STATX_BTIME);
    if (!status || !S_ISREG(status->stx_mode)) {
        return std::nullopt;
    }
    FileIdentity identity;
    identity.device = makedev(status->stx_dev_major, status->stx_dev_minor);
    identity.inode = status->stx_ino;
    if ((status->stx_mask & STATX_BTIME) != 0) {
        identity.birth = Time{status->stx_btime.tv_sec, status->stx_btime.tv_nsec};
    }
    return identity;
}

std::optional<std::uint64_t> FileIdentity::deviceOfFolder(const QString& path) {
    const auto status = statusOf(path, STATX_TYPE);
    return status && S_ISDIR(status->stx_mode)
               ? std::optional<std::uint64_t>(makedev(status->stx_dev_major, status->stx_dev_minor))
               : std::nullopt;
}

bool FileIdentity::isSameFileAs(const FileIdentity& other) const {
    return inode == other.inode && birth == other.birth &&
           (birth.has_value() || device == other.device);
}

}  // namespace ambulet
