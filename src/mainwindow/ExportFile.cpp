#include "mainwindow/ExportFile.h"

#include "mainwindow/SettingsKeys.h"
#include "platform/DocumentPortal.h"
#include "platform/FileBookmark.h"
#include "platform/UserDefaults.h"

#include <QFile>

namespace ambulet {

FoundFile findFile(const RememberedFile& remembered) {
    if (remembered.bookmark) {
        if (const auto resolved = FileBookmark::resolve(*remembered.bookmark)) {
            const FileAccess access(resolved->file);  // needed to make a bookmark, too
            return {resolved->file,
                    resolved->stale ? FileBookmark::make(resolved->file) : std::nullopt, access};
        }
    }
    if (!remembered.path) {
        return {};
    }
    const FileURL file(*remembered.path);
    return {file, {}, FileAccess(file)};
}

QString shownPath(const QString& path) {
    const auto hostPath = hostPathOfFile(FileURL(path).path);
    return hostPath ? QFile::decodeName(QByteArray::fromStdString(*hostPath)) : path;
}

ExportFile::ExportFile(UserDefaults& defaults)
    : _defaults(defaults), _path(defaults.persistent(SettingsKeys::xmlFilePath)),
      _foundPath(_path) {}

RememberedFile ExportFile::remembered() const {
    auto bookmark = _defaults.data(SettingsKeys::xmlFileBookmark);
    if (bookmark && !FileBookmark::isBookmark(*bookmark)) {
        bookmark.reset();
    }
    return {bookmark, _path};
}

// The bookmark is stored at once, not by the load. Otherwise, if the program ended before the load,
// the next start would load the previous file.
void ExportFile::choose(const QString& path) {
    _path = path;
    _foundPath = path;
    _defaults.setString(SettingsKeys::xmlFilePath, path);
    if (const auto bookmark = FileBookmark::make(path)) {
        _defaults.setData(SettingsKeys::xmlFileBookmark, *bookmark);
    }
}

void ExportFile::refresh(const RememberedFile& remembered, const FoundFile& found) {
    if (found.file && remembered.path == _path) {
        _foundPath = QFile::decodeName(QByteArray::fromStdString(found.file->path));
    }
    if (found.freshBookmark &&
        _defaults.data(SettingsKeys::xmlFileBookmark) == remembered.bookmark) {
        _defaults.setData(SettingsKeys::xmlFileBookmark, *found.freshBookmark);
    }
}

}  // namespace ambulet
