#include "widgets/FocusOutline.h"

#include "widgets/Contrast.h"

#include <QLineEdit>
#include <QPainter>
#include <QPalette>

namespace ambulet {

void drawFocusOutline(QPainter& painter, const QRect& rect, const QPalette& palette,
                      std::initializer_list<QColor> grounds) {
    QColor color = palette.color(QPalette::Highlight);
    const QColor towards = blackOrWhite(*grounds.begin());
    for (const QColor& ground : grounds) {
        color = withContrast(color, towards, ground, markContrast);
    }
    painter.save();
    painter.setPen(color);
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
    painter.restore();
}

void drawFocusOutlineOfField(QLineEdit& field) {
    constexpr int frame = 2;
    if (field.hasFocus()) {
        QPainter painter(&field);
        drawFocusOutline(painter, field.rect().adjusted(frame, frame, -frame, -frame),
                         field.palette(), {field.palette().color(QPalette::Base)});
    }
}

}  // namespace ambulet
