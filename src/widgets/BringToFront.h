#pragma once

class QWidget;

namespace ambulet {

/// Shows a window, restored if it is minimised, in front of the program's others and gives it the
/// keyboard. Main thread only.
void bringToFront(QWidget& window);

}  // namespace ambulet
