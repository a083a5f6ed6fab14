#include "platform/UserDefaults.h"

#include <QLocale>
#include <QRegularExpression>

#include <cmath>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

bool isData(const QVariant& value) {
    return value.typeId() == QMetaType::QByteArray;
}

// As doubleValue of text/Numbers, which a settings store should not need, but of Qt's texts.
double leadingNumber(const QString& text) {
    static const QRegularExpression number(uR"(^\s*([+-]?(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?))"_s);
    return number.match(text).captured(1).toDouble();
}

}  // namespace

UserDefaults& UserDefaults::standard() {
    static UserDefaults defaults(SettingsStore::placeFor(Bundle::main()));
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
    return leadingNumber(string(key).value_or(QString()));
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
    // What is read back is a decimal number, so infinity is written as one that is out of range.
    const QString infinite = value < 0 ? u"-1e999"_s : u"1e999"_s;
    _store.setValue(key, std::isinf(value)
                             ? infinite
                             : QString::number(value, 'g', QLocale::FloatingPointShortest));
}

}  // namespace ambulet
