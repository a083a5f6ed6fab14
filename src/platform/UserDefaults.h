#pragma once

#include "platform/SettingsStore.h"

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace ambulet {

/// The user's settings of this application. A key without a stored value has its registered
/// default, which is in memory only.
///
/// A write is stored at once, and a read sees the values that other processes have stored. No
/// operation fails. Of a damaged file, the undamaged lines are read. A value that cannot be stored
/// is kept in memory, and every later write tries to store it. `standard()` also tries when the
/// application ends. Main thread only.
class UserDefaults {
  public:
    /// The settings in the INI file `file`; on macOS those in the preferences domain of that name.
    explicit UserDefaults(const QString& file) : _store(file) {}

    /// The application's settings, at the place that `SettingsStore::placeFor` returns.
    static UserDefaults& standard();

    /// Adds registered defaults. They replace earlier ones with the same keys.
    void registerDefaults(const QVariantMap& defaults) { _registered.insert(defaults); }

    /// The text under `key`. Nothing if there is no value, or if it is data.
    std::optional<QString> string(const QString& key) const;

    /// The data under `key`. Nothing if there is no value, or if it is a text.
    std::optional<QByteArray> data(const QString& key) const;

    /// The number at the start of the text under `key`, as read by `doubleValue`; 0 if there is
    /// none.
    double doubleForKey(const QString& key) const;

    /// The text stored under `key`, which may be empty. Registered defaults do not count. Data is
    /// returned as text. Nothing if no value is stored.
    std::optional<QString> persistent(const QString& key) const;

    void setString(const QString& key, const QString& value);
    void setData(const QString& key, const QByteArray& value);

    /// `doubleForKey` returns the same value, except for NaN, which is read as 0.
    void setDouble(const QString& key, double value);

    /// Tries again to store the values that could not be stored.
    void synchronize() { _store.flush(); }

  private:
    std::optional<QVariant> value(const QString& key) const;

    mutable SettingsStore _store;
    QVariantMap _registered;
};

}  // namespace ambulet
