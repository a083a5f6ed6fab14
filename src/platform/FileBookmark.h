#pragma once

#include "platform/FileURL.h"

#include <QByteArray>

#include <optional>

namespace ambulet {

/// A bookmark is data that refers to a file. It can be stored, and a later run can find the file
/// with it, even if the file was moved.
///
/// On Linux a bookmark is a record of the absolute path and of the file's `FileIdentity`. On macOS
/// it is the system's security-scoped bookmark; that variant was never run.
///
/// No operation opens the file. `make` and `resolve` access the file system, so they block if the
/// file system hangs. Any thread.
class FileBookmark {
  public:
    struct Resolved {
        FileURL file;
        bool stale = false;  ///< a new bookmark should be made of `file` and replace the old one
    };

    /// A bookmark of the file. Nothing if there is no regular file at that path.
    static std::optional<QByteArray> make(const FileURL& file);

    /// Whether the data is a bookmark of a version that `resolve` supports. Does not access the
    /// file system.
    static bool isBookmark(const QByteArray& data);

    /// Finds the file of the bookmark. The first of these that applies is the result:
    /// 1. The same file is still at the stored path: this path, not stale.
    /// 2. Another regular file is at the stored path: this path, stale.
    /// 3. The same file is found elsewhere: its new path, stale. The search covers the old folder,
    ///    its parent, the Downloads, Documents, Desktop and home folders, and all folders below
    ///    these except hidden ones, on the same file system. The search ends after 200,000 entries
    ///    or 2 seconds.
    /// 4. Otherwise nothing, as for data that is not a bookmark.
    static std::optional<Resolved> resolve(const QByteArray& bookmark);
};

}  // namespace ambulet
