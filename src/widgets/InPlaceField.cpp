// QLineEdit's own signals are not used: `editingFinished` is also sent when another window is
// activated, when the field is hidden, and a second time after `returnPressed`.

#include "widgets/InPlaceField.h"

#include "widgets/FocusOutline.h"
#include "widgets/ReadableSelection.h"

#include <QKeyEvent>

namespace ambulet {

InPlaceField::InPlaceField(QWidget* parent) : QLineEdit(parent) {
    keepSelectionReadable(this);
}

bool InPlaceField::event(QEvent* event) {
    // Escape goes to the field even if it is a shortcut of an action.
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QLineEdit::event(event);
}

void InPlaceField::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT insertNewline();
        break;
    case Qt::Key_Escape:
        Q_EMIT cancelOperation();
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void InPlaceField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    const Qt::FocusReason reason = event->reason();
    const bool comesBack = reason == Qt::ActiveWindowFocusReason ||
                           reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
    if (!isHidden() && !comesBack) {
        Q_EMIT didEndEditing();
    }
}

void InPlaceField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    drawFocusOutlineOfField(*this);
}

}  // namespace ambulet
