#pragma once

#include <QRect>

#include <initializer_list>

class QColor;
class QLineEdit;
class QPainter;
class QPalette;

namespace ambulet {

/// Draws the outline that marks the keyboard focus, just inside `rect`. `grounds` are the colours
/// that the outline covers or is beside. The outline has the palette's highlight colour, changed if
/// its contrast with a ground is below `markContrast`. The outline is not filled, unlike Fusion's
/// focus frame, because a fill lowers the contrast of the text inside.
void drawFocusOutline(QPainter& painter, const QRect& rect, const QPalette& palette,
                      std::initializer_list<QColor> grounds);

/// If a text field has the focus, draws the outline inside the field's frame, because the frame's
/// colour may be close to the outline's. Call this after the field has painted itself.
void drawFocusOutlineOfField(QLineEdit& field);

}  // namespace ambulet
