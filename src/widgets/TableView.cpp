#include "widgets/TableView.h"

#include "widgets/TableHeader.h"
#include "widgets/TableModel.h"
#include "widgets/TableViewDataSource.h"

#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace {

constexpr int rowPadding = 8;    // points above and below a row's text, together
constexpr int cellPadding = 11;  // points at either side of a cell's text, beyond the style's own

// Between two colours of the palette, so that light and dark desktops both get a fitting one.
QColor mixed(const QColor& ground, const QColor& ink, qreal share) {
    const auto mix = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {mix(ground.red(), ink.red()), mix(ground.green(), ink.green()),
            mix(ground.blue(), ink.blue())};
}

/// Draws group rows on a band, and as enabled: that they cannot be selected is no reason to dim
/// them. No cell shows a focus frame; the selection shows where one is.
class RowDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem ground = option;
        initStyleOption(&ground, index);
        const QWidget* const table = option.widget;
        table->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &ground, painter, table);
        QStyleOptionViewItem text = option;
        text.rect.adjust(cellPadding, 0, -cellPadding, 0);
        QStyledItemDelegate::paint(painter, text, index);
    }

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state.setFlag(QStyle::State_HasFocus, false);
        if (index.data(TableModel::groupRole).toBool()) {
            option->state |= QStyle::State_Enabled;
            option->state &= ~QStyle::State_MouseOver;
            const QPalette::ColorGroup group = option->state.testFlag(QStyle::State_Active)
                                                   ? QPalette::Active
                                                   : QPalette::Inactive;
            option->palette.setCurrentColorGroup(group);
            option->backgroundBrush = mixed(option->palette.color(QPalette::Base),
                                            option->palette.color(QPalette::Text), 0.08);
        }
    }
};

std::vector<int> rowsOf(const QItemSelectionModel& selection) {
    std::vector<int> rows;
    for (const QItemSelectionRange& range : selection.selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            if (selection.model()->flags(selection.model()->index(row, 0)) != Qt::NoItemFlags) {
                rows.push_back(row);
            }
        }
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

}  // namespace

TableView::TableView(QWidget* parent) : QTableView(parent), _model(new TableModel(this)) {
    setModel(_model);
    setItemDelegate(new RowDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setShowGrid(false);
    setCornerButtonEnabled(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    auto* const header = new TableHeader(cellPadding, this);
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    setHorizontalHeader(header);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, &TableView::columnDidResize);
    fitRowHeight();
}

void TableView::setDataSource(TableViewDataSource* dataSource) {
    _dataSource = dataSource;
    _model->setDataSource(dataSource);
}

void TableView::setColumns(std::vector<TableColumn> columns) {
    _model->setColumns(std::move(columns));
    for (int column = 0; column < _model->columnCount(); ++column) {
        setColumnWidth(column, _model->columns()[static_cast<std::size_t>(column)].width);
    }
    showSelection();
}

const std::vector<TableColumn>& TableView::columns() const {
    return _model->columns();
}

void TableView::reloadData() {
    _model->reload();
    const int rows = _model->rowCount();
    std::erase_if(_selectedRowIndexes, [rows](int row) { return row >= rows; });
    showSelection();
}

void TableView::selectRowIndexes(std::vector<int> rows) {
    const int count = _model->rowCount();
    std::erase_if(rows, [count](int row) { return row < 0 || row >= count; });
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    setSelectedRowIndexes(std::move(rows));
    showSelection();
}

void TableView::deselectAll() {
    selectRowIndexes({});
}

void TableView::setSelectedRowIndexes(std::vector<int> rows) {
    if (rows == _selectedRowIndexes) {
        return;
    }
    _selectedRowIndexes = std::move(rows);
    if (_dataSource != nullptr) {
        _dataSource->tableViewSelectionDidChange();
    }
}

// Makes Qt's selection show the indexes kept here.
void TableView::showSelection() {
    const QScopedValueRollback showing(_showingSelection, true);
    QItemSelection selection;
    for (std::size_t first = 0; first < _selectedRowIndexes.size();) {
        std::size_t last = first;
        while (last + 1 < _selectedRowIndexes.size() &&
               _selectedRowIndexes[last + 1] == _selectedRowIndexes[last] + 1) {
            ++last;
        }
        selection.select(_model->index(_selectedRowIndexes[first], 0),
                         _model->index(_selectedRowIndexes[last], _model->columnCount() - 1));
        first = last + 1;
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void TableView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    if (!_showingSelection) {
        setSelectedRowIndexes(rowsOf(*selectionModel()));
    }
}

void TableView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    fitLastColumn();
}

void TableView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fitRowHeight();
    }
}

// QHeaderView has one minimum for all its sections; ours differ.
void TableView::columnDidResize(int column, int /*oldWidth*/, int newWidth) {
    const int minimum = _model->columns()[static_cast<std::size_t>(column)].minimumWidth;
    if (newWidth < minimum) {
        setColumnWidth(column, minimum);
    } else {
        fitLastColumn();
    }
}

// The last column takes up what the others leave, and is never below its own minimum: past that
// the table scrolls sideways. (The header's own stretching knows one minimum for all sections.)
void TableView::fitLastColumn() {
    const int last = _model->columnCount() - 1;
    if (last < 0) {
        return;
    }
    int others = 0;
    for (int column = 0; column < last; ++column) {
        others += columnWidth(column);
    }
    const int minimum = _model->columns()[static_cast<std::size_t>(last)].minimumWidth;
    setColumnWidth(last, std::max(minimum, viewport()->width() - others));
}

void TableView::fitRowHeight() {
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
}
