#pragma once

#include <QMargins>
#include <QPoint>

class QWidget;

namespace ambulet {

/// The margins of a window's frame; null until the window manager has reported them.
QMargins frameMargins(const QWidget& window);

/// Moves a window so that the upper left corner of its frame is at `place`.
void moveFrame(QWidget& window, QPoint place);

/// Makes a window smaller, down to its minimum size, if its frame is larger than the available area
/// of its screen. Returns whether the frame was larger.
bool shrinkToScreen(QWidget& window);

/// Like `shrinkToScreen`. In addition, a window that was too large, or that the user could not
/// reach, is moved so that its frame, or at least its title bar, is in the available area of its
/// screen. The user can reach a window if a part of its title bar, of full height and at least 50
/// points wide, is in the available area of any screen.
void fitOnScreen(QWidget& window);

}  // namespace ambulet
