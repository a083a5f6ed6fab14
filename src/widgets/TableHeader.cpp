#include "widgets/TableHeader.h"

#include <QPainter>
#include <QStyleOptionHeader>

namespace ambulet {

TableHeader::TableHeader(int padding, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), _padding(padding) {}

void TableHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    QStyleOptionHeaderV2 option;
    initStyleOption(&option);
    option.rect = rect;
    initStyleOptionForIndex(&option, logicalIndex);
    style()->drawControl(QStyle::CE_HeaderSection, &option, painter, this);

    // A cell's own margin is the style's for focus frames and one more, a header's is another one.
    const int inset = _padding + style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) +
                      1 - style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    option.rect = rect.adjusted(inset, 0, -inset, 0);
    option.rect = style()->subElementRect(QStyle::SE_HeaderLabel, &option, this);
    style()->drawControl(QStyle::CE_HeaderLabel, &option, painter, this);
}

}  // namespace ambulet
