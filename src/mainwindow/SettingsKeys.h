#pragma once

#include <QString>

namespace ambulet {

/// The keys of the settings. The key of the main window's frame is not here: the interface
/// description holds it, as the window's `frameAutosaveName`.
namespace SettingsKeys {

/// Text: the path of the chosen file. Present if the user has ever chosen a file.
inline const QString xmlFilePath = QStringLiteral("xmlFilePath");

/// Data: a FileBookmark of the chosen file. If none could be made of that file, it is of an earlier
/// one.
inline const QString xmlFileBookmark = QStringLiteral("xmlFileBookmark");

/// Number: feet per step, greater than 0.
inline const QString strideFootLength = QStringLiteral("strideFootLength");

}  // namespace SettingsKeys

}  // namespace ambulet
