#pragma once

#include <QMargins>
#include <QPoint>

class QWidget;

namespace ambulet {

/// The margins of a window's frame; null until the window manager has told them.
QMargins frameMargins(const QWidget& window);

/// Moves a window so that the upper left corner of its frame is at `place`.
void moveFrame(QWidget& window, QPoint place);

/// Makes a window smaller, down to its minimum size, if its frame is larger than the available area
/// of its screen. Returns whether the size changed.
bool shrinkToScreen(QWidget& window);

/// Like `shrinkToScreen`, and moves a window that was too large, or that the user could not reach,
/// so that its frame, or at least its title bar, is in that area. A window can be reached if 50
/// points or more of the width of its title bar, in its whole height, lie in the available area of
/// a screen. Any other window stays where it is.
void fitOnScreen(QWidget& window);

}  // namespace ambulet
