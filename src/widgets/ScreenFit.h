#pragma once

#include <QMargins>
#include <QPoint>

class QWidget;

namespace ambulet {

/// What the windowing system puts around a window; nothing before that is known.
QMargins frameMargins(const QWidget& window);

/// Moves a window so that the upper left corner of its frame is there.
void moveFrame(QWidget& window, QPoint place);

/// Makes a window smaller, but not smaller than it can be, where its frame is larger than the
/// available area of its screen. Whether it was.
bool shrinkToScreen(QWidget& window);

/// The same, and moves a window that was larger so that its frame, or its title bar at least, is in
/// that area. One that fits is left wherever it is.
void fitOnScreen(QWidget& window);

}  // namespace ambulet
