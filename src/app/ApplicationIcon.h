#pragma once

#include <QIcon>

namespace ambulet {

class Bundle;

/// The application's icon in the sizes from 16 to 256 pixels that the bundle has; null if the
/// bundle has none.
QIcon applicationIcon(const Bundle& bundle);

/// Sets the icon of all windows of the application: at once in the sizes up to 32 pixels, and in
/// all sizes after the first window has been painted. The bundle must outlive the application.
void setApplicationIcon(const Bundle& bundle);

}  // namespace ambulet
