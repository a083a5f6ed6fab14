#pragma once

#include <QByteArray>

#include <optional>
#include <string>
#include <sys/stat.h>

namespace ambulet {

/// A small file that is read whole, and replaced in one step. Linux only. Main thread or any other;
/// two that replace the same file at once exclude each other, in this process and in others.
class WholeFile {
  public:
    /// The file itself, where `path` is a link to it.
    explicit WholeFile(const std::string& path);

    /// The content; empty where there is no file. None where what is there is not a regular file,
    /// cannot be read, or is larger than `limit` bytes. Never waits for a FIFO or a device.
    std::optional<QByteArray> read(std::size_t limit);

    enum class Outcome {
        Replaced,  ///< the new content is on the disk
        Changed,   ///< the file is not the one that was read last; nothing was done
        Failed     ///< it cannot be done, or the file is write-protected; nothing was done
    };

    /// Replaces the file by one with this content, which only its owner may read.
    Outcome replace(const QByteArray& content) const;

    /// Removes what processes that were killed while they replaced the file have left.
    /// Call it with the lock held.
    void removeLeftovers() const;

    /// Holds other writers off for as long as it lives. It waits as long as others are seen to
    /// write, and half a second for one that writes nothing; then it goes on without the lock.
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
    using Version = std::optional<struct stat>;  // none where there is no file

    Version version() const;

    std::string _folder;
    std::string _name;
    std::string _path;
    Version _read;
};

}  // namespace ambulet
