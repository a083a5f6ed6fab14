#pragma once

#include <QRect>

class QColor;
class QPainter;
class QPalette;

namespace ambulet {

/// Draws the outline that marks the keyboard focus, just inside `rect`. Its colour is the palette's
/// highlight colour, changed if its contrast with `ground` is below `markContrast`. It is never
/// filled: Fusion fills its focus frame, which lowers the contrast of the text in it.
void drawFocusOutline(QPainter& painter, const QRect& rect, const QPalette& palette,
                      const QColor& ground);

}  // namespace ambulet
