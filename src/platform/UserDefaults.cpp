#include "platform/UserDefaults.h"

#include "platform/Bundle.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <cmath>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

bool makeFolder(const QString& path) {
    return QFileInfo(path).isDir() ||
           (makeFolder(QFileInfo(path).path()) && QDir().mkdir(path, ownerOnly));
}

// Sees to it that the file is there and that nobody but its owner can read or write it. QSettings
// gives a file that it makes to everybody, but leaves an existing one its mode.
bool makePrivate(const QString& path) {
    if (!makeFolder(QFileInfo(path).path())) {
        return false;
    }
    const int file = ::open(QFile::encodeName(path).constData(),
                            O_RDONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0) {
        return false;
    }
    struct stat status {};
    const bool isPrivate = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
                           ((status.st_mode & (S_IRWXG | S_IRWXO)) == 0 ||
                            ::fchmod(file, status.st_mode & S_IRWXU) == 0);
    ::close(file);
    return isPrivate;
}

// Opening a FIFO or a device could wait for ever. QSettings is then given a place that cannot be,
// and so keeps what it is told to store in memory.
QString readablePlace(const QString& path) {
    const QFileInfo place(path);
    return !place.exists() || place.isFile() || place.isDir() ? path : path + "/none"_L1;
}

QString textOf(const QVariant& value) {
    // A text with commas that was written by hand, without quotes, is read as a list.
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(u',')
                                                    : value.toString();
}

double leadingNumber(const QString& text) {
    static const QRegularExpression number(uR"(^\s*([+-]?(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?))"_s);
    return number.match(text).captured(1).toDouble();
}

}  // namespace

UserDefaults::UserDefaults(const QString& file)
    : _file(readablePlace(file)), _settings(_file, QSettings::IniFormat) {
    _settings.setFallbacksEnabled(false);
}

#ifdef Q_OS_MACOS
UserDefaults::UserDefaults(const QString& organization, const QString& application)
    : _settings(QSettings::NativeFormat, QSettings::UserScope, organization, application) {
    _settings.setFallbacksEnabled(false);
}
#endif

UserDefaults& UserDefaults::standard() {
    // Without an identifier the settings have no place, and nothing is stored.
    const QString identifier = Bundle::main().identifier().value_or(QString());
#ifdef Q_OS_MACOS
    // The native domain is the organisation's, turned round, and the application's name.
    const qsizetype dot = identifier.lastIndexOf(u'.');
    QStringList domain = identifier.first(dot).split(u'.');
    std::reverse(domain.begin(), domain.end());
    static UserDefaults defaults(domain.join(u'.'), identifier.sliced(dot + 1));
#else
    static UserDefaults defaults(
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' +
        identifier + ".ini"_L1);
#endif
    return defaults;
}

void UserDefaults::registerDefaults(const QVariantMap& defaults) {
    _registered.insert(defaults);
}

std::optional<QVariant> UserDefaults::stored(const QString& key) const {
    _settings.sync();
    return _settings.contains(key) ? std::optional(_settings.value(key)) : std::nullopt;
}

std::optional<QVariant> UserDefaults::value(const QString& key) const {
    if (const std::optional<QVariant> own = stored(key)) {
        return own;
    }
    const auto registered = _registered.find(key);
    return registered == _registered.end() ? std::nullopt : std::optional(*registered);
}

std::optional<QString> UserDefaults::string(const QString& key) const {
    const std::optional<QVariant> found = value(key);
    return found && found->typeId() != QMetaType::QByteArray ? std::optional(textOf(*found))
                                                             : std::nullopt;
}

std::optional<QByteArray> UserDefaults::data(const QString& key) const {
    const std::optional<QVariant> found = value(key);
    return found && found->typeId() == QMetaType::QByteArray ? std::optional(found->toByteArray())
                                                             : std::nullopt;
}

double UserDefaults::doubleForKey(const QString& key) const {
    return leadingNumber(string(key).value_or(QString()));
}

std::optional<QString> UserDefaults::persistent(const QString& key) const {
    const std::optional<QVariant> found = stored(key);
    return found ? std::optional(textOf(*found)) : std::nullopt;
}

void UserDefaults::setString(const QString& key, const QString& value) {
    store(key, value);
}

void UserDefaults::setData(const QString& key, const QByteArray& value) {
    store(key, value);
}

void UserDefaults::setDouble(const QString& key, double value) {
    // What is read back is a decimal number, and this one is beyond all others.
    const QString infinite = value < 0 ? u"-1e999"_s : u"1e999"_s;
    store(key, std::isinf(value) ? infinite
                                 : QString::number(value, 'g', QLocale::FloatingPointShortest));
}

void UserDefaults::store(const QString& key, const QVariant& value) {
    _settings.setValue(key, value);
    if (_file.isEmpty() || makePrivate(_file)) {
        _settings.sync();
    }
}
