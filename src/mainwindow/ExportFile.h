#pragma once

#include "platform/FileURL.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace ambulet {

class UserDefaults;

/// What the settings store about a file in order to find it again. A plain value; any thread.
struct RememberedFile {
    std::optional<QByteArray> bookmark;  ///< one that `FileBookmark` knows
    std::optional<QString> path;

    bool isNone() const { return !bookmark && !path; }
};

/// The result of looking for a remembered file.
struct FoundFile {
    std::optional<FileURL> file;
    std::optional<QByteArray> freshBookmark;  ///< to be stored in place of a stale one
};

/// The path to show for a file. If a document portal gave the file to a sandboxed program, it is
/// the path outside the sandbox. Accesses the file system.
QString shownPath(const QString& path);

/// Looks for the file. The result is the file to which the bookmark resolves; else the path, even
/// if no file is there; else empty. Accesses the file system, so it may take seconds, or hang.
FoundFile findFile(const RememberedFile& remembered);

/// The export file that the user has chosen, as stored in the settings. Only `choose` accesses an
/// export file, namely the one just chosen. Main thread only.
class ExportFile {
  public:
    /// Reads the stored path; a registered default does not count. The settings must outlive this.
    explicit ExportFile(UserDefaults& defaults);

    /// The path that was chosen last, even if the file has moved since. Empty if no file was ever
    /// chosen.
    const std::optional<QString>& path() const { return _path; }

    /// The stored path and bookmark. A damaged bookmark is left out.
    RememberedFile remembered() const;

    /// Stores the path of a file and a bookmark of it. If no bookmark can be made, the previous one
    /// stays stored.
    void choose(const QString& path);

    /// Stores the fresh bookmark, if there is one. Does nothing if the stored bookmark is no longer
    /// that of `remembered`.
    void refresh(const RememberedFile& remembered, const FoundFile& found);

  private:
    UserDefaults& _defaults;
    std::optional<QString> _path;
};

}  // namespace ambulet
