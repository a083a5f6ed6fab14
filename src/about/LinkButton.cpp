#include "about/LinkButton.h"

#include "widgets/FocusOutline.h"
#include "widgets/Label.h"

#include <QKeyEvent>
#include <QPainter>

namespace ambulet {

namespace {

constexpr int focusMargin = 3;  // between the text and the focus outline, left and right

}  // namespace

LinkButton::LinkButton(const QString& text, const QFont& font) {
    setText(text);
    QFont underlined = font;
    underlined.setUnderline(true);
    setFont(underlined);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

QSize LinkButton::sizeHint() const {
    return fontMetrics().size(Qt::TextSingleLine, text());
}

void LinkButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(labelColor(LabelColor::Link, palette()));
    QRect around;
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, text(), &around);
    if (hasFocus()) {
        drawFocusOutline(painter, around.adjusted(-focusMargin, 0, focusMargin, 0) & rect(),
                         palette(), {palette().color(QPalette::Window)});
    }
}

void LinkButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat()) {
            click();
        }
    } else {
        QAbstractButton::keyPressEvent(event);
    }
}

}  // namespace ambulet
