// QSettings does the reading and writing, the merging with what other processes wrote, and the
// replacing of the file at one stroke. It is not left to make the file, as it would make it
// readable to everybody, nor to try where it would fail or wait for ever.

#include "platform/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

constexpr auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
constexpr auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                        QFile::WriteOther | QFile::ExeOther;

bool makeFolder(const QString& path) {
    return QFileInfo(path).isDir() ||
           (makeFolder(QFileInfo(path).path()) && QDir().mkdir(path, owner));
}

// Whether it can be read without waiting: a FIFO or a device cannot.
bool isFileOrNothing(const QString& path) {
    const QFileInfo place(path);
    return !place.exists() || place.isFile();
}

// Sees to it that the file is there, can be written, and is its owner's alone.
bool makePrivate(const QString& path) {
    QFile file(path);
    return isFileOrNothing(path) &&
           file.open(QIODevice::ReadWrite, QFile::ReadOwner | QFile::WriteOwner) &&
           (!(file.permissions() & others) || file.setPermissions(file.permissions() & owner));
}

bool isWritable(const QString& path) {
    // QSettings takes the same lock, but for as long as it lasts.
    return makeFolder(QFileInfo(path).path()) && makePrivate(path) &&
           QLockFile(path + ".lock"_L1).tryLock(1000);
}

}  // namespace

SettingsStore::SettingsStore(const QString& place) : _place(QFileInfo(place).absoluteFilePath()) {
    if (isFileOrNothing(_place)) {
        _settings.emplace(_place, QSettings::IniFormat);
    }
}

QString SettingsStore::placeFor(const Bundle& bundle) {
    const std::optional<QString> identifier = bundle.identifier();
    return identifier ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                            u'/' + *identifier + ".ini"_L1
                      : u"/"_s;
}

std::optional<QVariant> SettingsStore::value(const QString& key) {
    if (const auto kept = _unstored.constFind(key); kept != _unstored.cend()) {
        return *kept;
    }
    if (!_settings) {
        return std::nullopt;
    }
    if (isFileOrNothing(_place)) {
        _settings->sync();
    }
    if (!_settings->contains(key)) {
        return std::nullopt;
    }
    const QVariant value = _settings->value(key);
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(u',') : value;
}

void SettingsStore::setValue(const QString& key, const QVariant& value) {
    _unstored.insert(key, value);
    if (!_settings || !isWritable(_place)) {
        return;
    }
    for (auto kept = _unstored.cbegin(); kept != _unstored.cend(); ++kept) {
        _settings->setValue(kept.key(), kept.value());
    }
    _unstored.clear();
    _settings->sync();
}

}  // namespace ambulet
