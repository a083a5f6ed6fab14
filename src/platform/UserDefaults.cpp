#include "platform/UserDefaults.h"

#include "text/Numbers.h"

#include <QCoreApplication>
#include <QLocale>

#include <cmath>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

bool isData(const QVariant& value) {
    return value.typeId() == QMetaType::QByteArray;
}

}  // namespace

UserDefaults& UserDefaults::standard() {
    // When the application ends, it tries a last time to store what could not be stored before.
    static UserDefaults& defaults = []() -> UserDefaults& {
        static UserDefaults own(SettingsStore::placeFor(Bundle::main()));
        qAddPostRoutine([] { own.synchronize(); });
        return own;
    }();
    return defaults;
}

std::optional<QVariant> UserDefaults::value(const QString& key) const {
    if (std::optional<QVariant> stored = _store.value(key)) {
        return stored;
    }
    const auto registered = _registered.find(key);
    return registered == _registered.end() ? std::nullopt : std::optional(*registered);
}

std::optional<QString> UserDefaults::string(const QString& key) const {
    const std::optional<QVariant> found = value(key);
    return found && !isData(*found) ? std::optional(found->toString()) : std::nullopt;
}

std::optional<QByteArray> UserDefaults::data(const QString& key) const {
    const std::optional<QVariant> found = value(key);
    return found && isData(*found) ? std::optional(found->toByteArray()) : std::nullopt;
}

double UserDefaults::doubleForKey(const QString& key) const {
    return doubleValue(string(key).value_or(QString()).toStdString());
}

std::optional<QString> UserDefaults::persistent(const QString& key) const {
    const std::optional<QVariant> stored = _store.value(key);
    return stored ? std::optional(stored->toString()) : std::nullopt;
}

void UserDefaults::setString(const QString& key, const QString& value) {
    _store.setValue(key, value);
}

void UserDefaults::setData(const QString& key, const QByteArray& value) {
    _store.setValue(key, value);
}

void UserDefaults::setDouble(const QString& key, double value) {
    // `doubleValue` does not read "inf", but it reads a decimal number that is out of range as
    // infinity. So infinity is stored as such a number.
    const QString infinite = value < 0 ? u"-1e999"_s : u"1e999"_s;
    _store.setValue(key, std::isinf(value)
                             ? infinite
                             : QString::number(value, 'g', QLocale::FloatingPointShortest));
}

}  // namespace ambulet
