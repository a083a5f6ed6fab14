#include "widgets/TableHeader.h"

#include "widgets/Contrast.h"
#include "widgets/RowDelegate.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyleOptionHeader>
#include <QToolTip>

namespace ambulet {

TableHeader::TableHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setTextElideMode(Qt::ElideRight);
}

void TableHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    QStyleOptionHeaderV2 option;
    initStyleOption(&option);
    option.rect = rect;
    initStyleOptionForIndex(&option, logicalIndex);
    // Not the style's background: no line has enough contrast with all parts of the gradient that
    // Fusion draws.
    painter->fillRect(rect, palette().color(QPalette::Window));
    painter->setPen(separatorColor(palette()));
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    if (visualIndex(logicalIndex) < count() - 1) {
        painter->drawLine(rect.topRight(), rect.bottomRight());
    }

    // The style adds its own margin.
    const int inset = RowDelegate::textMargin(*this) -
                      style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    option.rect = rect.adjusted(inset, 0, -inset, 0);
    option.rect = style()->subElementRect(QStyle::SE_HeaderLabel, &option, this);
    option.palette.setColor(QPalette::ButtonText, palette().color(QPalette::WindowText));
    painter->setPen(palette().color(QPalette::WindowText));
    style()->drawControl(QStyle::CE_HeaderLabel, &option, painter, this);
}

bool TableHeader::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QHeaderView::viewportEvent(event);
    }
    const auto* const help = static_cast<QHelpEvent*>(event);
    const int section = logicalIndexAt(help->pos());
    QString title;
    if (section >= 0) {
        const QString whole = model()->headerData(section, Qt::Horizontal).toString();
        const int room = sectionSize(section) - 2 * RowDelegate::textMargin(*this);
        if (fontMetrics().horizontalAdvance(whole) > room) {
            title = whole;
        }
    }
    QToolTip::showText(help->globalPos(), title, this);
    return true;
}

}  // namespace ambulet
