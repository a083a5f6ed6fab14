#pragma once

#include <QRect>

#include <initializer_list>

class QColor;
class QLineEdit;
class QPainter;
class QPalette;

namespace ambulet {

/// Draws the outline that marks the keyboard focus, just inside `rect`. `grounds` are the colours
/// that the outline covers or is beside. Its own colour is the palette's highlight, changed if the
/// contrast with any of them is below `markContrast`. The outline is not filled: Fusion fills its
/// focus frame, which lowers the contrast of the text in it.
void drawFocusOutline(QPainter& painter, const QRect& rect, const QPalette& palette,
                      std::initializer_list<QColor> grounds);

/// If a text field has the focus, draws the outline inside the field's frame, because the frame's
/// colour may be close to the outline's. To be called after the field has painted itself.
void drawFocusOutlineOfField(QLineEdit& field);

}  // namespace ambulet
