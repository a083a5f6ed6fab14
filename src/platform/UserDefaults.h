#pragma once

#include "platform/SettingsStore.h"

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace ambulet {

/// The user's settings of this application: stored values, and behind them the registered defaults,
/// which are in memory only and answer for keys without a stored value.
///
/// A write is stored at once, and a read sees what other processes have stored. No operation fails:
/// a damaged store is read as far as it can be, and a value that cannot be stored is kept in memory
/// and tried again at the next write and when the application ends. Main thread only.
class UserDefaults {
  public:
    /// The settings in the INI file `file`; on macOS those of the preferences domain of that name.
    explicit UserDefaults(const QString& file) : _store(file) {}

    /// The application's own, at `SettingsStore::placeFor` its bundle; on macOS the bundle
    /// identifier's preferences.
    static UserDefaults& standard();

    /// Adds registered defaults. A default replaces an earlier one with the same key.
    void registerDefaults(const QVariantMap& defaults) { _registered.insert(defaults); }

    /// The text under `key`; none where there is nothing, or data.
    std::optional<QString> string(const QString& key) const;

    /// The data under `key`; none where there is nothing, or text.
    std::optional<QByteArray> data(const QString& key) const;

    /// The number that the text under `key` begins with, as `doubleValue` reads it; 0 without one.
    double doubleForKey(const QString& key) const;

    /// The text stored under `key`; registered defaults do not count. None where nothing is stored.
    /// An empty text is a value. Data is given as text.
    std::optional<QString> persistent(const QString& key) const;

    void setString(const QString& key, const QString& value);
    void setData(const QString& key, const QByteArray& value);

    /// `doubleForKey` gives an equal value again, but for NaN, which reads as 0.
    void setDouble(const QString& key, double value);

    /// Tries again to store what could not be stored.
    void synchronize() { _store.flush(); }

  private:
    std::optional<QVariant> value(const QString& key) const;

    mutable SettingsStore _store;
    QVariantMap _registered;
};

}  // namespace ambulet
