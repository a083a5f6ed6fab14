#include "platform/FileURL.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>

namespace ambulet {

namespace {

namespace fs = std::filesystem;

std::string pathDecodedTo(const QString& text) {
    std::string path = QFile::encodeName(text).toStdString();
    std::error_code error;
    if (!text.contains(QChar::ReplacementCharacter) || fs::exists(path, error)) {
        return path;
    }
    const QFileInfo parts(text);
    const std::string folder = pathDecodedTo(parts.path());
    std::optional<std::string> found;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())) ==
            parts.fileName()) {
            found = std::min(found.value_or(entry->path()), entry->path().string());
        }
    }
    return found.value_or(path);
}

}  // namespace

FileURL::FileURL(const QString& text) : path(pathDecodedTo(text)) {}

}  // namespace ambulet
