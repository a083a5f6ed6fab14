#include "widgets/RowDelegate.h"

#include "widgets/Contrast.h"
#include "widgets/TableModel.h"
#include "widgets/TableView.h"

#include <QPainter>

namespace ambulet {

int RowDelegate::textMargin(const QWidget& table) {
    return padding + table.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &table) + 1;
}

RowDelegate::RowDelegate(TableView& table) : QStyledItemDelegate(&table), _table(table) {}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    _table.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &ground, painter, &_table);
    QStyleOptionViewItem text = option;
    text.rect.adjust(padding, 0, -padding, 0);
    QStyledItemDelegate::paint(painter, text, index);
}

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->state.setFlag(QStyle::State_HasFocus, false);
    const bool selected = _table.isRowSelected(index.row());
    option->state.setFlag(QStyle::State_Selected, selected);
    option->displayAlignment =
        QStyle::visualAlignment(option->direction, option->displayAlignment) | Qt::AlignAbsolute;
    option->direction = option->text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
    if (index.data(TableModel::groupRole).toBool()) {
        option->state |= QStyle::State_Enabled;
        option->state &= ~QStyle::State_MouseOver;
        const QPalette::ColorGroup group =
            option->state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
        option->palette.setCurrentColorGroup(group);
        if (!selected) {
            option->backgroundBrush = groupRowColor(option->palette);
        }
    }
}

}  // namespace ambulet
