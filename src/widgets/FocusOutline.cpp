#include "widgets/FocusOutline.h"

#include "widgets/Contrast.h"

#include <QPainter>
#include <QPalette>

namespace ambulet {

void drawFocusOutline(QPainter& painter, const QRect& rect, const QPalette& palette,
                      const QColor& ground) {
    painter.save();
    painter.setPen(withContrast(palette.color(QPalette::Highlight), blackOrWhite(ground), ground,
                                markContrast));
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

}  // namespace ambulet
