// The new content is written to a temporary file, which is flushed to disk and then renamed over
// the old file. So the file is complete at any moment. The lock is on the folder, because a lock
// file could be stale, belong to another program, or be left behind.

#include "platform/WholeFile.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/file.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace ambulet {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

class Descriptor {
  public:
    explicit Descriptor(int number) : _number(number) {}
    ~Descriptor() {
        if (_number >= 0) {
            ::close(_number);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool isOpen() const { return _number >= 0; }
    int number() const { return _number; }

  private:
    int _number;
};

constexpr std::string_view leftoverEnd = ".new-XXXXXX";

// Whether the file has not changed between two versions. Replacing it changes the inode; writing in
// place changes the size or the time.
bool isSame(const std::optional<struct stat>& one, const std::optional<struct stat>& other) {
    if (!one || !other) {
        return !one && !other;
    }
    return one->st_dev == other->st_dev && one->st_ino == other->st_ino &&
           one->st_size == other->st_size && one->st_mtim.tv_sec == other->st_mtim.tv_sec &&
           one->st_mtim.tv_nsec == other->st_mtim.tv_nsec;
}

bool writeAll(int file, const QByteArray& content) {
    for (qsizetype at = 0; at < content.size();) {
        const ssize_t size =
            ::write(file, content.constData() + at, static_cast<std::size_t>(content.size() - at));
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size <= 0) {
            return false;
        }
        at += size;
    }
    return ::fsync(file) == 0;
}

// The path itself; if a link is there, the path of the link's final target. Nothing need exist
// there.
fs::path target(fs::path path) {
    std::error_code error;
    constexpr int mostLinks = 40;
    for (int links = 0; links < mostLinks && fs::is_symlink(path, error); ++links) {
        path = path.parent_path() / fs::read_symlink(path, error);
    }
    return path;
}

}  // namespace

WholeFile::WholeFile(const std::string& path) {
    const fs::path file = target(path);
    _folder = file.parent_path();
    _name = file.filename();
    _path = file;
}

WholeFile::Version WholeFile::version() const {
    struct stat status = {};
    return ::stat(_path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

std::optional<QByteArray> WholeFile::read(std::size_t limit) {
    _read = version();
    if (!_read) {
        return errno == ENOENT ? std::optional(QByteArray()) : std::nullopt;
    }
    if (!S_ISREG(_read->st_mode)) {
        return std::nullopt;  // opening a device may have an effect
    }
    // The file may have been replaced by a FIFO in the meantime, so opening it must not block.
    const Descriptor file(::open(_path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    _read = status;
    QByteArray content;
    std::array<char, 16384> block{};
    for (;;) {
        const ssize_t size = ::read(file.number(), block.data(), block.size());
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size < 0 || content.size() + size > static_cast<qsizetype>(limit)) {
            return std::nullopt;
        }
        if (size == 0) {
            return content;
        }
        content.append(block.data(), size);
    }
}

WholeFile::Outcome WholeFile::replace(const QByteArray& content) const {
    // A write-protected file must not be replaced, although its folder would allow that.
    if (_read && ::faccessat(AT_FDCWD, _path.c_str(), W_OK, AT_EACCESS) != 0) {
        return Outcome::Failed;
    }
    std::string fresh = _folder + "/." + _name;
    fresh += leftoverEnd;
    {
        const Descriptor file(::mkostemp(fresh.data(), O_CLOEXEC));  // mode 0600
        if (!file.isOpen()) {
            return Outcome::Failed;
        }
        const bool written = writeAll(file.number(), content);
        const bool changed = !isSame(version(), _read);
        if (!written || changed || ::rename(fresh.c_str(), _path.c_str()) != 0) {
            ::unlink(fresh.c_str());
            return written && changed ? Outcome::Changed : Outcome::Failed;
        }
    }
    // If syncing the folder fails, a power failure may bring the old file back, which is complete.
    const Descriptor folder(::open(_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen()) {
        ::fsync(folder.number());
    }
    return Outcome::Replaced;
}

void WholeFile::removeLeftovers() const {
    const std::string begin = '.' + _name + std::string(leftoverEnd.substr(0, 5));
    std::error_code error;
    for (fs::directory_iterator entry(_folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (name.starts_with(begin) && name.size() == _name.size() + 1 + leftoverEnd.size()) {
            ::unlink(entry->path().c_str());
        }
    }
}

WholeFile::Lock::Lock(const WholeFile& file, std::chrono::milliseconds patience)
    : _folder(::open(file._folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    using Clock = std::chrono::steady_clock;
    Version seen = file.version();
    const auto begin = Clock::now();
    auto since = begin;
    while (_folder >= 0) {
        _held = ::flock(_folder, LOCK_EX | LOCK_NB) == 0;
        if (_held || (errno != EWOULDBLOCK && errno != EINTR)) {
            return;  // other errors mean that the file system has no locks
        }
        const auto now = Clock::now();
        if (const Version version = file.version(); !isSame(version, seen)) {
            seen = version;
            since = now;
        }
        if (now - since >= patience || now - begin >= 2s) {
            return;
        }
        std::this_thread::sleep_for(1ms);
    }
}

WholeFile::Lock::~Lock() {
    if (_folder >= 0) {
        ::close(_folder);  // releases the lock
    }
}

}  // namespace ambulet
