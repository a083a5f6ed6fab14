#pragma once

#include <QRect>

class QColor;
class QPainter;
class QPalette;

namespace ambulet {

/// Draws the mark of the keyboard focus along the inside of `rect`: an outline and never a fill, in
/// the palette's highlight colour or the nearest one that stands out from `ground`. (Fusion fills
/// its focus frame, which takes contrast from the text in it.)
void drawFocusOutline(QPainter& painter, const QRect& rect, const QPalette& palette,
                      const QColor& ground);

}  // namespace ambulet
