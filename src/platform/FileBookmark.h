#pragma once

#include "platform/FileURL.h"

#include <QByteArray>

#include <optional>

namespace ambulet {

/// A reference to a file that can be stored, that outlives the process, and that finds the file
/// again after it was moved.
///
/// On Linux it is a record of the absolute path and of the file's identity: inode and birth time,
/// where the file system keeps no birth time inode and device. There the identity is weaker: an
/// inode number may serve a new file soon after the old one was deleted, and device numbers may
/// change with a restart, in which case the bookmark is stale. On macOS it is the system's
/// security-scoped bookmark; that variant was never run.
///
/// Nothing here opens the file itself or waits for a FIFO. Any thread.
class FileBookmark {
  public:
    struct Resolved {
        FileURL file;
        bool stale = false;  ///< a new bookmark should be made of `file` and replace the old one
    };

    /// A bookmark of the file; none where there is no such regular file.
    static std::optional<QByteArray> make(const FileURL& file);

    /// Where the bookmark's file is now:
    /// - the same file at its path: that, not stale;
    /// - another regular file at its path: that, stale;
    /// - the same file at another place: that, stale. It is searched on the file system it was on,
    ///   in its old folder, the folder around that and the user's usual folders and what is below
    ///   them, for at most 40 milliseconds and 20,000 entries, the nearest folders first;
    /// - else none, and none for data that is no bookmark, is cut off, or is of a later version.
    static std::optional<Resolved> resolve(const QByteArray& bookmark);
};

}  // namespace ambulet
