#pragma once

#include <QByteArray>

#include <chrono>
#include <optional>
#include <string>
#include <sys/stat.h>

namespace ambulet {

/// A small file that is read as a whole and replaced atomically. Linux only. Any thread; a `Lock`
/// excludes other writers.
class WholeFile {
  public:
    /// If `path` is a link, the file is its target.
    explicit WholeFile(const std::string& path);

    /// The content; empty if there is no file. Nothing if the file is not regular, cannot be read,
    /// or is larger than `limit` bytes. Never blocks on a FIFO or a device.
    std::optional<QByteArray> read(std::size_t limit);

    enum class Outcome {
        Replaced,  ///< the file has the new content
        Changed,   ///< the file has changed since it was read; it is left as it is
        Failed     ///< the file cannot be written, or is write-protected; it is left as it is
    };

    /// Replaces the file by one with this content and mode 0600. Call `read` first.
    Outcome replace(const QByteArray& content) const;

    /// Removes the temporary files that killed processes left behind. Call this with the lock held,
    /// because it also removes the temporary file of a write that is in progress.
    void removeLeftovers() const;

    /// A lock on the file's folder, which only one `Lock` in all processes can hold at a time. The
    /// constructor waits while another `Lock` holds it. The constructor gives up, and `isHeld` is
    /// false, if the file has not changed for the time `patience`, after two seconds in all, or if
    /// the folder cannot be locked.
    class Lock {
      public:
        Lock(const WholeFile& file, std::chrono::milliseconds patience);
        ~Lock();
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

        bool isHeld() const { return _held; }

      private:
        int _folder;
        bool _held = false;
    };

  private:
    using Version = std::optional<struct stat>;  // empty if there is no file, or `stat` fails

    Version version() const;

    std::string _folder;
    std::string _name;
    std::string _path;
    Version _read;
};

}  // namespace ambulet
