// What the table shows in addition to QTableView: the pinned group row, the text of an empty table,
// the focus outline, and tooltips.

#include "widgets/Contrast.h"
#include "widgets/FocusOutline.h"
#include "widgets/RowDelegate.h"
#include "widgets/TableModel.h"
#include "widgets/TableView.h"
#include "widgets/TableViewDataSource.h"

#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

namespace ambulet {

void TableView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    paintTextOfEmptyTable(painter);
    paintPinnedRow(painter);
    paintFocus(painter);
}

void TableView::paintTextOfEmptyTable(QPainter& painter) const {
    if (_model->rowCount() > 0 || _model->dataSource() == nullptr) {
        return;
    }
    painter.setPen(faintText(palette().color(QPalette::Text), palette().color(QPalette::Base)));
    painter.drawText(viewport()->rect().adjusted(RowDelegate::padding, 0, -RowDelegate::padding, 0),
                     Qt::AlignCenter | Qt::TextWordWrap, _model->dataSource()->textOfEmptyTable());
}

// For users of the keyboard, draws an outline around the current row, or around the whole table if
// there is no current row. The outline of a row does not cover the pinned row.
void TableView::paintFocus(QPainter& painter) const {
    if (!_focusVisible || !hasFocus()) {
        return;
    }
    const QModelIndex current = currentIndex();
    if (!current.isValid()) {
        drawFocusOutline(painter, viewport()->rect(), palette(),
                         {palette().color(QPalette::Base), groupRowColor(palette())});
        return;
    }
    const QRect row(0, rowViewportPosition(current.row()), viewport()->width(),
                    rowHeight(current.row()));
    painter.setClipRect(viewport()->rect().adjusted(0, pinnedRect().bottom() + 1, 0, 0));
    const auto ground = isRowSelected(current.row()) ? QPalette::Highlight : QPalette::Base;
    drawFocusOutline(painter, row, palette(), {palette().color(ground)});
}

// The group row of the topmost row, if its own place is not wholly visible; otherwise -1.
int TableView::pinnedRow() const {
    int row = rowAt(0);
    while (row >= 0 && !_model->index(row, 0).data(TableModel::groupRole).toBool()) {
        --row;
    }
    return row >= 0 && rowViewportPosition(row) < 0 ? row : -1;
}

QRect TableView::pinnedRect() const {
    const int pinned = pinnedRow();
    if (pinned < 0) {
        return {};
    }
    const int height = rowHeight(pinned);
    // All rows have the same height. So only the second visible row can push the pinned row.
    const int second = rowAt(height);
    int top = 0;
    if (second > pinned && _model->index(second, 0).data(TableModel::groupRole).toBool()) {
        top = rowViewportPosition(second) - height;
    }
    return {0, std::min(top, 0), viewport()->width(), height};
}

void TableView::paintPinnedRow(QPainter& painter) const {
    const QRect place = pinnedRect();
    if (place.isNull()) {
        return;
    }
    const int row = pinnedRow();
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    for (int column = 0; column < _model->columnCount(); ++column) {
        option.rect =
            QRect(columnViewportPosition(column), place.top(), columnWidth(column), place.height());
        painter.fillRect(option.rect, palette().color(QPalette::Base));
        itemDelegate()->paint(&painter, option, _model->index(row, column));
    }
    painter.setPen(separatorColor(palette()));
    painter.drawLine(place.bottomLeft(), place.bottomRight());
}

// While the user drags a selection, points on the pinned row belong to the rows behind it.
QModelIndex TableView::indexAt(const QPoint& point) const {
    if (state() != DragSelectingState && pinnedRect().contains(point)) {
        return _model->index(pinnedRow(), columnAt(point.x()));
    }
    return QTableView::indexAt(point);
}

void TableView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    QTableView::scrollTo(index, hint);
    if (!index.isValid() || index.row() == pinnedRow()) {
        return;
    }
    // The pinned row must not cover the row of the index.
    const int hidden = pinnedRect().bottom() + 1 - rowViewportPosition(index.row());
    if (hidden > 0) {
        verticalScrollBar()->setValue(verticalScrollBar()->value() - hidden);
    }
}

void TableView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    viewport()->update();  // the pinned row does not move with the others
}

bool TableView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip && showToolTip(*static_cast<QHelpEvent*>(event))) {
        return true;
    }
    return QTableView::viewportEvent(event);
}

// Shows the text of a cell as the tooltip if it does not fit in the cell. Returns whether it is
// shown.
bool TableView::showToolTip(const QHelpEvent& event) {
    const QModelIndex index = indexAt(event.pos());
    if (!index.isValid()) {
        return false;
    }
    QFont shown = font();
    shown.setBold(index.data(TableModel::groupRole).toBool());
    const QString text = index.data().toString();
    if (QFontMetrics(shown).horizontalAdvance(text) + spaceBesideTexts() <=
        columnWidth(index.column())) {
        return false;
    }
    QToolTip::showText(event.globalPos(), text, viewport(), visualRect(index));
    return true;
}

}  // namespace ambulet
