#pragma once

#include <QRect>

#include <initializer_list>

class QColor;
class QLineEdit;
class QPainter;
class QPalette;

namespace ambulet {

/// Draws the outline that marks the keyboard focus, just inside `rect`. Its colour is the palette's
/// highlight colour, changed if its contrast with any of `grounds` is below `markContrast`: the
/// colours that the outline covers or is beside. It is never filled: Fusion fills its focus frame,
/// which lowers the contrast of the text in it.
void drawFocusOutline(QPainter& painter, const QRect& rect, const QPalette& palette,
                      std::initializer_list<QColor> grounds);

/// Draws the outline of a text field if it has the focus: inside the field's frame, whose colour
/// may be close to the outline's. To be called after the field has painted itself.
void drawFocusOutlineOfField(QLineEdit& field);

}  // namespace ambulet
