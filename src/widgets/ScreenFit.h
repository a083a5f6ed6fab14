#pragma once

#include <QList>
#include <QMargins>
#include <QPoint>
#include <QRect>

class QWidget;

namespace ambulet {

/// Whether a part of a title bar, of full height and at least 50 points wide, is in one of `areas`.
/// A title bar that is narrower than 50 points must be wholly in the area.
bool isReachable(const QRect& titleBar, const QList<QRect>& areas);

/// The place of a frame's upper left corner in `area` that is nearest to its present place. A frame
/// that is too wide begins at the left edge, one that is too tall at the top edge.
QPoint placeInArea(const QRect& frame, const QRect& area);

/// The place of a centred frame's upper left corner: half of the free width of `area` is on each
/// side, and a quarter of the free height is above. A frame that is too large begins as with
/// `placeInArea`.
QPoint centeredPlace(QSize frame, const QRect& area);

/// The margins of a window's frame; null until the window manager has reported them.
QMargins frameMargins(const QWidget& window);

/// Moves a window so that the upper left corner of its frame is at `place`.
void moveFrame(QWidget& window, QPoint place);

/// Makes a window smaller, down to its minimum size, if its frame is larger than the available area
/// of its screen. Returns whether the frame was larger.
bool shrinkToScreen(QWidget& window);

/// Like `shrinkToScreen`. In addition, a window that was too large, or that the user could not
/// reach, is moved so that its frame, or at least its title bar, is in the available area of its
/// screen. The user can reach a window if `isReachable` holds for the available areas of all
/// screens.
void fitOnScreen(QWidget& window);

}  // namespace ambulet
