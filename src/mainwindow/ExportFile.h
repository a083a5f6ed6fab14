#pragma once

#include "platform/FileURL.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace ambulet {

class UserDefaults;

/// What is remembered of a file, enough to find it. A plain value; any thread.
struct RememberedFile {
    std::optional<QByteArray> bookmark;  ///< one that `FileBookmark` knows
    std::optional<QString> path;

    bool isNone() const { return !bookmark && !path; }
};

/// Where a remembered file was found.
struct FoundFile {
    std::optional<FileURL> file;
    std::optional<QByteArray> freshBookmark;  ///< to be stored in place of a stale one
};

/// Where the file is: where the bookmark leads, else at the path, whether there is a file or not;
/// none where there is neither. Asks the file system and so may take seconds, or hang.
FoundFile findFile(const RememberedFile& remembered);

/// The export file that the user has chosen, as the settings hold it. Its operations do not ask the
/// file system for the remembered file. Main thread only.
class ExportFile {
  public:
    /// Reads the stored path. Registered defaults do not count. The settings must outlive this.
    explicit ExportFile(UserDefaults& defaults);

    /// The path that was chosen last, wherever the file is now; none where no file was ever chosen.
    const std::optional<QString>& path() const { return _path; }

    /// What the settings hold.
    RememberedFile remembered() const;

    /// Stores the path of another file and a bookmark of it. Where no bookmark can be made the
    /// earlier one stays stored.
    void choose(const QString& path);

    /// Stores the fresh bookmark, if there is one, unless another was stored since `remembered`.
    void refresh(const RememberedFile& remembered, const FoundFile& found);

  private:
    UserDefaults& _defaults;
    std::optional<QString> _path;
};

}  // namespace ambulet
