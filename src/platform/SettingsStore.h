#pragma once

#include "platform/Bundle.h"
#include "platform/WholeFile.h"

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace ambulet {

/// What `UserDefaults` stores, and where: on Linux in an INI file, on macOS in the preferences of a
/// domain (that variant was never run). Keys are ASCII letters and digits, values a QString or a
/// QByteArray. Main thread only.
///
/// On Linux:
/// - The file and missing folders above it are made at the first write, for their owner only.
/// - A write replaces the file in one step. A write that fails leaves the file as it was.
/// - What is not a regular file, or is larger than 1 MB, is neither read nor written.
/// - Lines of the file that are not this program's are kept.
class SettingsStore {
  public:
    explicit SettingsStore(const QString& place);

    /// The place of an application's own settings: `<bundle identifier>.ini` in XDG_CONFIG_HOME if
    /// that is an absolute path, else in .config in the home folder (HOME, else the account's). A
    /// bundle without an identifier gets a place where nothing can be stored.
    static QString placeFor(const Bundle& bundle);

    /// The value that is stored now, by whatever process; none where there is none. While the file
    /// cannot be read, the value that was read or stored last.
    std::optional<QVariant> value(const QString& key);

    /// Stores the value on the disk before it returns. A value that cannot be stored is kept in
    /// memory and tried again by the next `setValue` and by `flush`.
    void setValue(const QString& key, const QVariant& value);

    /// Tries to store what could not be stored so far. True if nothing is left.
    bool flush();

  private:
    WholeFile::Outcome tryToStore();

    QString _place;
    QByteArray _content;  // as last read or stored
    QVariantMap _unstored;
};

}  // namespace ambulet
