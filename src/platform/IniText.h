#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariant>

#include <optional>

namespace ambulet {

/// The content of a settings file: lines `key=value` in the section [General], in the format of
/// QSettings. Other sections, comments and malformed lines are kept unchanged.
///
/// Keys are ASCII letters and digits. A value is a QString or a QByteArray. Any thread.
class IniText {
  public:
    explicit IniText(const QByteArray& content);

    /// The value of the last line with the key. An invalid QVariant if the line is
    /// `key=@Invalid()`. Nothing if there is no line with the key. A missing quote is not an error.
    std::optional<QVariant> value(const QString& key) const;

    /// Replaces the last line with the key; adds a line if there is none.
    void setValue(const QString& key, const QVariant& value);

    QByteArray content() const;

  private:
    qsizetype lineOf(const QString& key) const;

    QList<QByteArray> _lines;
};

}  // namespace ambulet
