#pragma once

#include "platform/FileURL.h"

#include <QByteArray>

#include <optional>

namespace ambulet {

/// A reference to a file that can be stored, outlives the process, and finds the file again after
/// it was moved.
///
/// On Linux it is a record of the absolute path and of the file's `FileIdentity`. On macOS it is
/// the system's security-scoped bookmark; that variant was never run.
///
/// No operation opens the file. `make` and `resolve` ask the file system, and so wait where it
/// hangs. Any thread.
class FileBookmark {
  public:
    struct Resolved {
        FileURL file;
        bool stale = false;  ///< a new bookmark should be made of `file` and replace the old one
    };

    /// A bookmark of the file; none where there is no such regular file.
    static std::optional<QByteArray> make(const FileURL& file);

    /// Whether the data is a bookmark of a version that `resolve` knows. Does not ask the file
    /// system.
    static bool isBookmark(const QByteArray& data);

    /// Where the bookmark's file is now:
    /// - the same file is at its path: there, not stale;
    /// - another regular file is at its path: there, stale;
    /// - the same file is at another place: there, stale. The search covers the old folder, the
    ///   folder around it, the user's usual folders and everything below these, on the file system
    ///   that the file was on. It ends after 200,000 entries or 2 seconds;
    /// - otherwise none. Also none where `isBookmark` is false.
    static std::optional<Resolved> resolve(const QByteArray& bookmark);
};

}  // namespace ambulet
