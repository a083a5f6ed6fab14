#pragma once

#include "platform/FileAccess.h"
#include "platform/FileURL.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace ambulet {

class UserDefaults;

/// What the settings store about a file in order to find it again. A plain value; any thread.
struct RememberedFile {
    std::optional<QByteArray> bookmark;  ///< a FileBookmark; tried before the path
    std::optional<QString> path;

    bool isNone() const { return !bookmark && !path; }
};

/// The result of looking for a remembered file.
struct FoundFile {
    std::optional<FileURL> file;
    std::optional<QByteArray> freshBookmark;  ///< to be stored instead of a stale bookmark
    std::optional<FileAccess> access;         ///< the right to read the file
};

/// The path to show for the file at `path`: its path outside the sandbox if a document portal gave
/// the file to a sandboxed program, else `path`. Accesses the file system.
QString shownPath(const QString& path);

/// Finds the file to which the bookmark resolves. Without such a file, the result is the path, even
/// if no file is there. If the bookmark is stale, the result also has a fresh bookmark, if one can
/// be made. Accesses the file system, so the call may take seconds, or hang.
FoundFile findFile(const RememberedFile& remembered);

/// The export file that the user has chosen, as stored in the settings. Only `choose` accesses an
/// export file, the chosen one. Main thread only.
class ExportFile {
  public:
    /// Reads the stored path; a registered default does not count. The settings must outlive the
    /// object.
    explicit ExportFile(UserDefaults& defaults);

    /// The path that was chosen last, even if the file has moved since. Empty if no file was ever
    /// chosen.
    const std::optional<QString>& path() const { return _path; }

    /// Where the file was found when it was loaded last; before that, `path()`.
    const std::optional<QString>& foundPath() const { return _foundPath; }

    /// The stored path and bookmark. Stored data that is not a bookmark is left out.
    RememberedFile remembered() const;

    /// Stores `path` and a bookmark of the file there. If no bookmark can be made, the previous
    /// bookmark stays stored.
    void choose(const QString& path);

    /// Takes over the result of a load. Changes `foundPath()` if `path()` is still that of
    /// `remembered`. Stores the fresh bookmark, if there is one and the stored bookmark is still
    /// that of `remembered`.
    void refresh(const RememberedFile& remembered, const FoundFile& found);

  private:
    UserDefaults& _defaults;
    std::optional<QString> _path;
    std::optional<QString> _foundPath;
};

}  // namespace ambulet
