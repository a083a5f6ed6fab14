#include "widgets/Button.h"

#include "widgets/FocusOutline.h"

#include <QKeyEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace ambulet {

namespace {

constexpr int frame = 3;  // between the button's edge and the outline

}  // namespace

void Button::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const bool marked = option.state.testFlag(QStyle::State_HasFocus) &&
                        option.state.testFlag(QStyle::State_KeyboardFocusChange);
    option.state.setFlag(QStyle::State_HasFocus, false);
    painter.drawControl(QStyle::CE_PushButton, option);
    if (marked) {
        // Fusion fills the button with a gradient around the palette's button colour.
        const QColor color = palette().color(QPalette::Button);
        drawFocusOutline(painter, rect().adjusted(frame, frame, -frame, -frame), palette(),
                         {color, color.darker(115), color.lighter(150)});
    }
}

void Button::keyPressEvent(QKeyEvent* event) {
    const bool presses = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!presses || !event->isAutoRepeat()) {
        QPushButton::keyPressEvent(event);
    }
}

}  // namespace ambulet
