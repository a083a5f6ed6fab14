#pragma once

class QWidget;

namespace ambulet {

/// Shows a window in front of the program's other windows and gives it the keyboard focus. A
/// minimised window is restored. Main thread only.
void bringToFront(QWidget& window);

}  // namespace ambulet
