#include "widgets/PathField.h"

#include "widgets/ReadableSelection.h"

#include <QPainter>
#include <QStyleOptionFrame>
#include <QTextDocument>

namespace ambulet {

namespace {

constexpr int textMargin = 2;  // what QLineEdit leaves at each side of its text

}  // namespace

PathField::PathField(QWidget* parent) : QLineEdit(parent) {
    keepSelectionReadable(this);
    setReadOnly(true);
    setFocusPolicy(Qt::ClickFocus);
    connect(this, &QLineEdit::textChanged, this, [this](const QString& path) {
        // A tooltip that looks like HTML is shown as that.
        setToolTip(Qt::mightBeRichText(path) ? Qt::convertFromPlainText(path, Qt::WhiteSpacePre)
                                             : path);
    });
}

void PathField::paintEvent(QPaintEvent* event) {
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QRect room = style()
                           ->subElementRect(QStyle::SE_LineEditContents, &option, this)
                           .adjusted(textMargin, 0, -textMargin, 0);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, room.width());
    if (hasFocus() || shown == text()) {
        QLineEdit::paintEvent(event);
        return;
    }
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

}  // namespace ambulet
