#include "platform/FileBookmark.h"

#include "platform/FileIdentity.h"
#include "platform/FileSearch.h"

#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace ambulet {

namespace {

// The record: signature, version, path in UTF-8, device, inode, whether there is a birth time, its
// seconds and nanoseconds.
constexpr quint32 signature = 0x416d6246;
constexpr quint8 version = 1;

struct Record {
    QString path;
    FileIdentity identity;
};

QByteArray written(const Record& record) {
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    const FileIdentity& identity = record.identity;
    const FileIdentity::Time birth = identity.birth.value_or(FileIdentity::Time{});
    stream << signature << version << record.path.toUtf8() << quint64{identity.device}
           << quint64{identity.inode} << identity.birth.has_value() << qint64{birth.seconds}
           << quint32{birth.nanoseconds};
    return data;
}

std::optional<Record> read(const QByteArray& data) {
    QDataStream stream(data);
    stream.setVersion(QDataStream::Qt_6_0);
    quint32 foundSignature = 0;
    quint8 foundVersion = 0;
    stream >> foundSignature >> foundVersion;
    if (foundSignature != signature || foundVersion != version) {
        return std::nullopt;
    }
    QByteArray path;
    quint64 device = 0;
    quint64 inode = 0;
    bool hasBirth = false;
    qint64 seconds = 0;
    quint32 nanoseconds = 0;
    stream >> path >> device >> inode >> hasBirth >> seconds >> nanoseconds;
    if (stream.status() != QDataStream::Ok || !stream.atEnd() || !path.startsWith('/')) {
        return std::nullopt;
    }
    Record record{QString::fromUtf8(path), {device, inode, std::nullopt}};
    if (hasBirth) {
        record.identity.birth = FileIdentity::Time{seconds, nanoseconds};
    }
    return record;
}

// Where a file may have been moved to, the likeliest first.
QStringList foldersToSearch(const QString& oldFolder) {
    QStringList folders = {oldFolder, QFileInfo(oldFolder).path()};
    for (const auto place : {QStandardPaths::DownloadLocation, QStandardPaths::DocumentsLocation,
                             QStandardPaths::DesktopLocation, QStandardPaths::HomeLocation}) {
        folders += QStandardPaths::standardLocations(place);
    }
    return folders;
}

// The file system that the folder is on, or was on when it was still there.
std::optional<std::uint64_t> deviceAround(QString folder) {
    auto device = FileIdentity::deviceOfFolder(folder);
    while (!device && folder != u"/") {
        folder = QFileInfo(folder).path();
        device = FileIdentity::deviceOfFolder(folder);
    }
    return device;
}

}  // namespace

std::optional<QByteArray> FileBookmark::make(const FileURL& file) {
    const QString path = QFileInfo(file.path).absoluteFilePath();
    const auto identity = FileIdentity::ofFile(path);
    return identity ? std::optional(written({path, *identity})) : std::nullopt;
}

std::optional<FileBookmark::Resolved> FileBookmark::resolve(const QByteArray& bookmark) {
    const std::optional<Record> record = read(bookmark);
    if (!record) {
        return std::nullopt;
    }
    if (const auto there = FileIdentity::ofFile(record->path)) {
        return Resolved{FileURL{record->path}, !there->isSameFileAs(record->identity)};
    }
    const QString oldFolder = QFileInfo(record->path).path();
    const auto device = deviceAround(oldFolder);
    const auto found =
        device ? findFile(record->identity, foldersToSearch(oldFolder), *device) : std::nullopt;
    return found ? std::optional(Resolved{FileURL{*found}, true}) : std::nullopt;
}

}  // namespace ambulet
