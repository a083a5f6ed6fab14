#include "widgets/LineLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace ambulet {

bool LineLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || elided(text()) == text()) {
        return QLabel::event(event);
    }
    QString shown = text();
    if (!toolTip().isEmpty()) {
        shown += u'\n' + toolTip();
    }
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), shown, this);
    return true;
}

// Does not call QLabel::paintEvent, which centres the text of a label with a focus policy one pixel
// higher or lower than that of other labels.
void LineLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    drawLine(painter, text());
}

void LineLabel::drawLine(QPainter& painter, const QString& text) const {
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(),
                          isEnabled(), elided(text), foregroundRole());
}

QString LineLabel::elided(const QString& text) const {
    return fontMetrics().elidedText(text, Qt::ElideRight, contentsRect().width());
}

}  // namespace ambulet
