#pragma once

#include <QByteArray>

#include <optional>
#include <string>
#include <sys/stat.h>

namespace ambulet {

/// A small file that is read as a whole and replaced atomically. Linux only. Any thread; a lock
/// excludes other writers of the same file, in this process and in others.
class WholeFile {
  public:
    /// If `path` is a link, the file is its target.
    explicit WholeFile(const std::string& path);

    /// The content; empty if there is no file. Nothing if it is not a regular file, cannot be read,
    /// or is larger than `limit` bytes. Never blocks on a FIFO or a device.
    std::optional<QByteArray> read(std::size_t limit);

    enum class Outcome {
        Replaced,  ///< the new content is on the disk
        Changed,   ///< the file has changed since it was read; nothing was done
        Failed     ///< it cannot be done, or the file is write-protected; nothing was done
    };

    /// Replaces the file by one with this content, which only the owner may read.
    Outcome replace(const QByteArray& content) const;

    /// Removes the temporary files of processes that were killed during a write. Call it with the
    /// lock held.
    void removeLeftovers() const;

    /// Excludes other writers as long as it exists. The constructor waits for a writer that holds
    /// the lock. It gives up, and `isHeld` is false, if the file has not changed for half a second,
    /// or if the file system has no locks.
    class Lock {
      public:
        explicit Lock(const WholeFile& file);
        ~Lock();
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

        bool isHeld() const { return _held; }

      private:
        int _folder;
        bool _held = false;
    };

  private:
    using Version = std::optional<struct stat>;  // empty if there is no file

    Version version() const;

    std::string _folder;
    std::string _name;
    std::string _path;
    Version _read;
};

}  // namespace ambulet
