#pragma once

class QWidget;

/// Shows a window, restored if it is minimised, in front of the program's others and gives it the
/// keyboard. Main thread only.
void bringToFront(QWidget& window);
