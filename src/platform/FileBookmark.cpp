#include "platform/FileBookmark.h"

#include "platform/FileIdentity.h"
#include "platform/FileSearch.h"

#include <QDataStream>
#include <QFile>
#include <QStandardPaths>

#include <filesystem>

namespace ambulet {

namespace {

namespace fs = std::filesystem;

// A bookmark has these fields: signature, version, path, device, inode, whether there is a birth
// time, its seconds and nanoseconds, size. Version 1 has no size.
constexpr quint32 signature = 0x416d6246;
constexpr quint8 newestVersion = 2;

struct Record {
    std::string path;
    FileIdentity identity;
};

QByteArray written(const Record& record) {
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    const FileIdentity& identity = record.identity;
    const FileIdentity::Time birth = identity.birth.value_or(FileIdentity::Time{});
    stream << signature << newestVersion << QByteArray::fromStdString(record.path)
           << quint64{identity.device} << quint64{identity.inode} << identity.birth.has_value()
           << qint64{birth.seconds} << quint32{birth.nanoseconds}
           << quint64{identity.size.value_or(0)};
    return data;
}

std::optional<Record> read(const QByteArray& data) {
    QDataStream stream(data);
    stream.setVersion(QDataStream::Qt_6_0);
    quint32 foundSignature = 0;
    quint8 version = 0;
    stream >> foundSignature >> version;
    if (foundSignature != signature || version < 1 || version > newestVersion) {
        return std::nullopt;
    }
    QByteArray path;
    quint64 device = 0;
    quint64 inode = 0;
    bool hasBirth = false;
    qint64 seconds = 0;
    quint32 nanoseconds = 0;
    quint64 size = 0;
    stream >> path >> device >> inode >> hasBirth >> seconds >> nanoseconds;
    if (version > 1) {
        stream >> size;
    }
    if (stream.status() != QDataStream::Ok || !stream.atEnd() || !path.startsWith('/') ||
        path.contains('\0')) {  // system calls would take the part before the NUL as the path
        return std::nullopt;
    }
    Record record{path.toStdString(), {device, inode}};
    record.identity.name = fs::path(record.path).filename();
    if (hasBirth) {
        record.identity.birth = FileIdentity::Time{seconds, nanoseconds};
    }
    if (version > 1) {
        record.identity.size = size;
    }
    return record;
}

// The folders to which a file may have been moved, the most likely first.
std::vector<std::string> foldersToSearch(const fs::path& oldFolder) {
    std::vector<std::string> folders = {oldFolder, oldFolder.parent_path()};
    for (const auto place : {QStandardPaths::DownloadLocation, QStandardPaths::DocumentsLocation,
                             QStandardPaths::DesktopLocation, QStandardPaths::HomeLocation}) {
        for (const QString& folder : QStandardPaths::standardLocations(place)) {
            folders.push_back(QFile::encodeName(folder).toStdString());
        }
    }
    return folders;
}

// The device number of the folder's file system. If the folder no longer exists, the device number
// of the nearest folder above it that exists.
std::optional<std::uint64_t> deviceAround(fs::path folder) {
    auto device = FileIdentity::deviceOfFolder(folder);
    while (!device && folder != folder.root_path()) {
        folder = folder.parent_path();
        device = FileIdentity::deviceOfFolder(folder);
    }
    return device;
}

}  // namespace

std::optional<QByteArray> FileBookmark::make(const FileURL& file) {
    std::error_code error;
    const fs::path path = fs::absolute(file.path, error);
    const auto identity = FileIdentity::ofFile(path);
    return identity ? std::optional(written({path, *identity})) : std::nullopt;
}

bool FileBookmark::isBookmark(const QByteArray& data) {
    return read(data).has_value();
}

std::optional<FileBookmark::Resolved> FileBookmark::resolve(const QByteArray& bookmark) {
    const std::optional<Record> record = read(bookmark);
    if (!record) {
        return std::nullopt;
    }
    if (const auto there = FileIdentity::ofFile(record->path)) {
        return Resolved{FileURL(record->path), !there->isSameFileAs(record->identity)};
    }
    const fs::path oldFolder = fs::path(record->path).parent_path();
    const auto device = deviceAround(oldFolder);
    const auto found =
        device ? findFile(record->identity, foldersToSearch(oldFolder), *device) : std::nullopt;
    return found ? std::optional(Resolved{FileURL(*found), true}) : std::nullopt;
}

}  // namespace ambulet
