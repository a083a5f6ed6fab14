#pragma once

#include "platform/Bundle.h"
#include "platform/WholeFile.h"

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace ambulet {

/// Stores the values of `UserDefaults`: on Linux in an INI file, on macOS in the preferences of a
/// domain (that variant was never run). Keys are ASCII letters and digits, values a QString or a
/// QByteArray. Main thread only.
///
/// On Linux:
/// - The first write creates the file and missing folders above it, for their owner only.
/// - A write replaces the file atomically. A write that fails does not change the file.
/// - A file that is not regular, or is larger than 1 MB, is neither read nor written.
/// - A write keeps all lines of the file except those of the written keys.
class SettingsStore {
  public:
    explicit SettingsStore(const QString& place);

    /// The place of an application's settings. On Linux, the file `<bundle identifier>.ini` in
    /// XDG_CONFIG_HOME if that is an absolute path, else in .config in the home folder (HOME, else
    /// the account's). On macOS, the bundle identifier, which is the domain. Without a bundle
    /// identifier, a place at which nothing can be stored.
    static QString placeFor(const Bundle& bundle);

    /// The value that was set here but could not be stored yet; else the stored value, which
    /// another process may have set. Nothing if there is neither. If the file cannot be read, the
    /// stored value is taken from the content that was read or stored last.
    std::optional<QVariant> value(const QString& key);

    /// Stores the value on disk before it returns. If that fails, the value is kept in memory, and
    /// the next `setValue` or `flush` tries again.
    void setValue(const QString& key, const QVariant& value);

    /// Tries to store the values that could not be stored. Returns whether all are stored now.
    bool flush();

  private:
    WholeFile::Outcome tryToStore();

    QString _place;
    QByteArray _content;  // as last read or stored
    QVariantMap _unstored;
    bool _lockWasRefused = false;  // at the last write
};

}  // namespace ambulet
