#include "widgets/FocusOutline.h"

#include "widgets/Contrast.h"

#include <QPainter>
#include <QPalette>

namespace ambulet {

void drawFocusOutline(QPainter& painter, const QRect& rect, const QPalette& palette,
                      const QColor& ground) {
    const QColor end =
        contrastRatio(Qt::black, ground) > contrastRatio(Qt::white, ground) ? Qt::black : Qt::white;
    painter.save();
    painter.setPen(withContrast(palette.color(QPalette::Highlight), end, ground, markContrast));
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

}  // namespace ambulet
