#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>
#include <QVariantMap>

#include <optional>

/// The user's settings of this application, a value a key, and behind them the registered defaults,
/// which are held in memory and answer for keys that have no stored value.
///
/// Every write is stored at once; every read sees what other processes have stored meanwhile, and
/// keys written by them are left alone. Nothing here fails: what can be read of a damaged file is
/// read, and what cannot be stored is kept for as long as the object lives. Main thread only.
class UserDefaults {
  public:
    /// The settings in an INI file. It need not exist; it and missing folders above it are made at
    /// the first write, for their owner only. A file that others may read is closed to them before
    /// it is written to. What is not a regular file is neither read nor written.
    explicit UserDefaults(const QString& file);

    /// The application's own: `<bundle identifier>.ini` in the user's configuration folder
    /// (XDG_CONFIG_HOME); on macOS the preferences of the bundle identifier (never run).
    static UserDefaults& standard();

    /// Adds defaults to, or replaces them among, the registered ones.
    void registerDefaults(const QVariantMap& defaults);

    /// The text under `key`; none where there is nothing, or data.
    std::optional<QString> string(const QString& key) const;

    /// The data under `key`; none where there is nothing, or text.
    std::optional<QByteArray> data(const QString& key) const;

    /// The decimal number that the text under `key` begins with, after white space; 0 where there
    /// is nothing or no number. Words for infinity or NaN are no numbers; a number out of range is
    /// infinite or 0.
    double doubleForKey(const QString& key) const;

    /// The text stored under `key`, whatever is registered; none where nothing is stored. A stored
    /// value of any kind counts, also an empty text; data is given as text.
    std::optional<QString> persistent(const QString& key) const;

    void setString(const QString& key, const QString& value);
    void setData(const QString& key, const QByteArray& value);

    /// `doubleForKey` gives the same value again, to the last bit, but for NaN, which reads as 0.
    void setDouble(const QString& key, double value);

  private:
    UserDefaults(const QString& organization, const QString& application);

    std::optional<QVariant> stored(const QString& key) const;
    std::optional<QVariant> value(const QString& key) const;
    void store(const QString& key, const QVariant& value);

    QString _file;  // empty where the system keeps the settings itself
    mutable QSettings _settings;
    QVariantMap _registered;
};
