// Every look-up in the file and every write reads the file again, because other processes may write
// it. A write takes the lock if possible, reads the file, changes the lines of its own keys, and
// replaces the file.

#include "platform/SettingsStore.h"

#include "platform/IniText.h"

#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ambulet {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr std::size_t largestFile = 1'000'000;

std::string encoded(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

bool makeFolder(const QString& path) {
    return QFileInfo(path).isDir() ||
           (makeFolder(QFileInfo(path).path()) &&
            (::mkdir(encoded(path).c_str(), 0700) == 0 || errno == EEXIST));
}

// The value of an environment variable if it is an absolute path, else an empty text.
QString folderIn(const char* variable) {
    const QString folder = QFile::decodeName(qgetenv(variable));
    return folder.startsWith(u'/') ? folder : QString();
}

QString accountHome() {
    std::array<char, 16384> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found);
    return found != nullptr ? QFile::decodeName(found->pw_dir) : QString();
}

QString configurationFolder() {
    if (QString folder = folderIn("XDG_CONFIG_HOME"); !folder.isEmpty()) {
        return folder;
    }
    const QString home = folderIn("HOME");
    return (home.isEmpty() ? accountHome() : home) + "/.config"_L1;
}

}  // namespace

SettingsStore::SettingsStore(const QString& place) : _place(QFileInfo(place).absoluteFilePath()) {}

QString SettingsStore::placeFor(const Bundle& bundle) {
    const std::optional<QString> identifier = bundle.identifier();
    return identifier ? configurationFolder() + u'/' + *identifier + ".ini"_L1 : u"/"_s;
}

std::optional<QVariant> SettingsStore::value(const QString& key) {
    if (const auto kept = _unstored.constFind(key); kept != _unstored.cend()) {
        return *kept;
    }
    if (const auto content = WholeFile(encoded(_place)).read(largestFile)) {
        _content = *content;
    }
    return IniText(_content).value(key);
}

void SettingsStore::setValue(const QString& key, const QVariant& value) {
    _unstored.insert(key, value);
    flush();
}

bool SettingsStore::flush() {
    if (_unstored.isEmpty()) {
        return true;
    }
    if (!makeFolder(QFileInfo(_place).path())) {
        return false;
    }
    // Another process may write without the lock, and so change the file in the meantime.
    constexpr int mostTries = 20;
    for (int tries = 0; tries < mostTries; ++tries) {
        switch (tryToStore()) {
        case WholeFile::Outcome::Replaced:
            _unstored.clear();
            return true;
        case WholeFile::Outcome::Changed:
            break;
        case WholeFile::Outcome::Failed:
            return false;
        }
    }
    return false;
}

WholeFile::Outcome SettingsStore::tryToStore() {
    WholeFile file(encoded(_place));
    // A program that held the lock for too long once is not waited for again.
    const WholeFile::Lock lock(file, _lockWasRefused ? 0ms : 500ms);
    _lockWasRefused = !lock.isHeld();
    if (lock.isHeld()) {
        file.removeLeftovers();
    }
    const auto content = file.read(largestFile);
    if (!content) {
        return WholeFile::Outcome::Failed;
    }
    IniText text(*content);
    for (auto kept = _unstored.cbegin(); kept != _unstored.cend(); ++kept) {
        text.setValue(kept.key(), kept.value());
    }
    const QByteArray fresh = text.content();
    if (static_cast<std::size_t>(fresh.size()) > largestFile) {
        return WholeFile::Outcome::Failed;
    }
    const WholeFile::Outcome outcome = file.replace(fresh);
    _content = outcome == WholeFile::Outcome::Replaced ? fresh : _content;
    return outcome;
}

}  // namespace ambulet
