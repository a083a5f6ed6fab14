#pragma once

#include "platform/FileURL.h"

#include <QByteArray>

#include <optional>

namespace ambulet {

/// A reference to a file that can be stored, and that finds the file in a later run even if it was
/// moved.
///
/// On Linux it is a record of the absolute path and of the file's `FileIdentity`. On macOS it is
/// the system's security-scoped bookmark; that variant was never run.
///
/// No operation opens the file. `make` and `resolve` access the file system, so they block if it
/// hangs. Any thread.
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
    /// 1. The same file is still at its path: that path, not stale.
    /// 2. Another regular file is at its path: that path, stale.
    /// 3. The same file is found elsewhere: its new path, stale. The search covers the old folder,
    ///    its parent, the user's usual folders, and all folders below these that are not hidden, on
    ///    the same file system. It ends after 200,000 entries or 2 seconds.
    /// 4. Nothing. This is also the result if `isBookmark` is false.
    static std::optional<Resolved> resolve(const QByteArray& bookmark);
};

}  // namespace ambulet
