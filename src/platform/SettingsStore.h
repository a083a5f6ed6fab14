#pragma once

#include "platform/Bundle.h"

#include <QSettings>
#include <QString>
#include <QVariantMap>

#include <optional>

namespace ambulet {

/// What `UserDefaults` stores, and where: on Linux in an INI file, on macOS in the preferences of a
/// domain (that variant was never run). Texts and data come back as such. Main thread only.
///
/// The file need not exist; it and missing folders above it are made at the first write, for their
/// owner only. A file that others may read is closed to them before it is written to. What is not a
/// regular file is neither read nor written.
class SettingsStore {
  public:
    explicit SettingsStore(const QString& place);

    /// The place of an application's own settings. Without an identifier it is one where nothing
    /// can be stored.
    static QString placeFor(const Bundle& bundle);

    /// What is stored under the key now, by whatever process; none where there is nothing. A text
    /// written into the file by hand may hold commas without quotes; blanks after them are lost.
    std::optional<QVariant> value(const QString& key);

    /// Stores a text or data, at once; if that cannot be done, keeps it for as long as the object
    /// lives, or until a later write can store it as well. Waits at most a second for another
    /// process that is writing.
    void setValue(const QString& key, const QVariant& value);

  private:
    QString _place;
    std::optional<QSettings> _settings;  // none where there cannot be any, and on macOS
    QVariantMap _unstored;
};

}  // namespace ambulet
