#pragma once

#include <QString>

namespace ambulet {

/// The keys of the settings. There are no others.
namespace SettingsKeys {

/// Text: the chosen file's path. Its presence says that a file was once chosen.
inline const QString xmlFilePath = QStringLiteral("xmlFilePath");

/// Data: a FileBookmark of the chosen file.
inline const QString xmlFileBookmark = QStringLiteral("xmlFileBookmark");

/// Number: feet per step, greater than 0.
inline const QString strideFootLength = QStringLiteral("strideFootLength");

/// Data: the main window's place and size. The interface description names it, too.
inline const QString mainWindowFrame = QStringLiteral("MainWindowFrame");

}  // namespace SettingsKeys

}  // namespace ambulet
