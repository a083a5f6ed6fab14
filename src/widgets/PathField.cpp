#include "widgets/PathField.h"

#include "widgets/Contrast.h"
#include "widgets/FocusOutline.h"
#include "widgets/ReadableSelection.h"

#include <QPainter>
#include <QStyleOptionFrame>
#include <QTextDocument>

namespace ambulet {

namespace {

constexpr int textMargin = 2;  // of QLineEdit, at each side of its text

}  // namespace

PathField::PathField(QWidget* parent) : QLineEdit(parent) {
    keepSelectionReadable(this);
    setReadOnly(true);
    connect(this, &QLineEdit::textChanged, this, [this](const QString& path) {
        // Qt would render a path that looks like HTML as HTML.
        setToolTip(Qt::mightBeRichText(path) ? Qt::convertFromPlainText(path, Qt::WhiteSpacePre)
                                             : path);
    });
}

void PathField::paintEvent(QPaintEvent* event) {
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QRect space = style()
                            ->subElementRect(QStyle::SE_LineEditContents, &option, this)
                            .adjusted(textMargin, 0, -textMargin, 0);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, space.width());
    if (text().isEmpty()) {
        // Qt would draw the placeholder with half the opacity of the text.
        paintLine(option, space, placeholderText(),
                  faintText(palette().color(QPalette::Text), palette().color(QPalette::Base)));
    } else if (!hasFocus() && shown != text()) {
        paintLine(option, space, shown, palette().color(QPalette::Text));
    } else {
        QLineEdit::paintEvent(event);
    }
    drawFocusOutlineOfField(*this);
}

void PathField::paintLine(const QStyleOptionFrame& option, const QRect& space, const QString& line,
                          const QColor& ink) {
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
    painter.setPen(ink);
    painter.drawText(space, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, line);
}

}  // namespace ambulet
