#pragma once

#include "platform/SettingsStore.h"

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace ambulet {

/// The user's settings of this application, a value a key, and behind them the registered defaults,
/// which are held in memory and answer for keys that have no stored value.
///
/// Every write is stored at once; every read sees what other processes have stored meanwhile, and
/// keys written by them are left alone. Nothing here fails: what can be read of a damaged store is
/// read, and what cannot be stored is kept for as long as the object lives. Main thread only.
class UserDefaults {
  public:
    /// The settings in the INI file `file`; on macOS those of the preferences domain of that name.
    explicit UserDefaults(const QString& file) : _store(file) {}

    /// The application's own: `<bundle identifier>.ini` in the user's configuration folder
    /// (XDG_CONFIG_HOME, else ~/.config); on macOS the bundle identifier's preferences.
    static UserDefaults& standard();

    /// Adds defaults to the registered ones, in place of those that have the same key.
    void registerDefaults(const QVariantMap& defaults) { _registered.insert(defaults); }

    /// The text under `key`; none where there is nothing, or data.
    std::optional<QString> string(const QString& key) const;

    /// The data under `key`; none where there is nothing, or text.
    std::optional<QByteArray> data(const QString& key) const;

    /// The decimal number that the text under `key` begins with, after white space; 0 where there
    /// is nothing or no number. Words for infinity or NaN are no numbers, a comma ends one; a
    /// number out of range is infinite or 0.
    double doubleForKey(const QString& key) const;

    /// The text stored under `key`, whatever is registered; none where nothing is stored. A stored
    /// value of any kind counts, also an empty text; data is given as text.
    std::optional<QString> persistent(const QString& key) const;

    void setString(const QString& key, const QString& value);
    void setData(const QString& key, const QByteArray& value);

    /// `doubleForKey` gives an equal value again, but for NaN, which reads as 0.
    void setDouble(const QString& key, double value);

  private:
    std::optional<QVariant> value(const QString& key) const;

    mutable SettingsStore _store;
    QVariantMap _registered;
};

}  // namespace ambulet
