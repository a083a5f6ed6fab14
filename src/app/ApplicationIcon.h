#pragma once

#include <QIcon>

namespace ambulet {

class Bundle;

/// The application's icon in all sizes found in the bundle; null if there are none.
QIcon applicationIcon(const Bundle& bundle);

/// Sets the icon of all windows of the application: at once in the sizes of title bars, and in all
/// sizes after the first window has been painted. The bundle must outlive the application.
void setApplicationIcon(const Bundle& bundle);

}  // namespace ambulet
