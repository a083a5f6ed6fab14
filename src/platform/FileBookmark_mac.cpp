// Never run, because no Mac was available.

#include "platform/FileBookmark.h"

#include <QByteArray>
#include <QFile>
#include <QUrl>

#include <CoreFoundation/CoreFoundation.h>
#include <memory>

namespace ambulet {

namespace {

// Owns an object of CoreFoundation, and releases it.
std::shared_ptr<const void> owned(CFTypeRef object) {
    return object == nullptr ? nullptr : std::shared_ptr<const void>(object, CFRelease);
}

}  // namespace

std::optional<QByteArray> FileBookmark::make(const FileURL& file) {
    // A file that was found by a bookmark can be opened only by the URL that the system made from
    // that bookmark, not by a new URL of its path.
    const auto url =
        file.system ? file.system
                    : owned(QUrl::fromLocalFile(QFile::decodeName(file.path.c_str())).toCFURL());
    if (!url) {
        return std::nullopt;
    }
    const auto data = owned(CFURLCreateBookmarkData(
        kCFAllocatorDefault, static_cast<CFURLRef>(url.get()),
        kCFURLBookmarkCreationWithSecurityScope, nullptr, nullptr, nullptr));
    return data ? std::optional(QByteArray::fromCFData(static_cast<CFDataRef>(data.get())))
                : std::nullopt;
}

bool FileBookmark::isBookmark(const QByteArray& data) {
    return !data.isEmpty();
}

std::optional<FileBookmark::Resolved> FileBookmark::resolve(const QByteArray& bookmark) {
    const auto data = owned(bookmark.toCFData());
    Boolean stale = false;
    const auto url = owned(CFURLCreateByResolvingBookmarkData(
        kCFAllocatorDefault, static_cast<CFDataRef>(data.get()),
        kCFURLBookmarkResolutionWithSecurityScope, nullptr, nullptr, &stale, nullptr));
    if (!url) {
        return std::nullopt;
    }
    const QString path = QUrl::fromCFURL(static_cast<CFURLRef>(url.get())).toLocalFile();
    return Resolved{FileURL(QFile::encodeName(path).toStdString(), url), stale != 0};
}

}  // namespace ambulet
