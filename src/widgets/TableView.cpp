// Selection, keys and mouse. TableView+Drawing.cpp draws; TableView+Columns.cpp sets the widths of
// the columns.

#include "widgets/TableView.h"

#include "widgets/ReadableSelection.h"
#include "widgets/RowDelegate.h"
#include "widgets/TableHeader.h"
#include "widgets/TableModel.h"
#include "widgets/TableViewDataSource.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace ambulet {

namespace {

constexpr int rowPadding = 8;  // in points: the space above a row's text and below it, together

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

// A modifier key alone does not show the focus, because it may be held for a click.
bool isModifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
           key == Qt::Key_Meta || key == Qt::Key_AltGr;
}

}  // namespace

TableView::TableView(QWidget* parent) : QTableView(parent), _model(new TableModel(this)) {
    keepSelectionReadable(this);
    setModel(_model);
    setItemDelegate(new RowDelegate(*this));
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
    auto* const header = new TableHeader(this);
    header->setHighlightSections(false);
    header->setMinimumSectionSize(0);  // columnDidResize keeps the minimum widths
    header->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    setHorizontalHeader(header);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, &TableView::columnDidResize);
    fitRowHeight();
}

void TableView::setDataSource(TableViewDataSource* dataSource) {
    _model->setDataSource(dataSource);
}

void TableView::setColumns(std::vector<TableColumn> columns) {
    _model->setColumns(std::move(columns));
    _ownWidths.clear();
    for (int column = 0; column < _model->columnCount(); ++column) {
        const int width = _model->columns()[static_cast<std::size_t>(column)].width;
        setColumnWidth(column, width);
        _ownWidths.push_back(width);
    }
    fitColumnsToTexts();
    showSelection();
}

const std::vector<TableColumn>& TableView::columns() const {
    return _model->columns();
}

void TableView::reloadData() {
    const int current = currentIndex().row();
    _model->reload();
    // Otherwise the rows may first be painted without their scroll bar, which Qt shows by a queued
    // call.
    executeDelayedItemsLayout();
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    const int rows = _model->rowCount();
    // Arrow keys and ranges continue from the same row as before.
    const QModelIndex kept = _model->index(current, 0);
    if (kept.isValid() && _model->flags(kept).testFlag(Qt::ItemIsSelectable)) {
        setAutoScroll(false);
        selectionModel()->setCurrentIndex(kept, QItemSelectionModel::NoUpdate);
        setAutoScroll(true);
    }
    std::erase_if(_selectedRowIndexes, [rows](int row) { return row >= rows; });
    fitColumnsToTexts();
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

bool TableView::isRowSelected(int row) const {
    return std::binary_search(_selectedRowIndexes.begin(), _selectedRowIndexes.end(), row);
}

void TableView::setSelectedRowIndexes(std::vector<int> rows) {
    if (rows == _selectedRowIndexes) {
        return;
    }
    _selectedRowIndexes = std::move(rows);
    viewport()->update();  // Qt repaints only rows that the user can select
    if (_model->dataSource() != nullptr) {
        _model->dataSource()->tableViewSelectionDidChange();
    }
}

// Sets Qt's selection to the indexes kept here.
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
        fitColumnsToTexts();
    }
}

// Differs from Qt in three cases:
// - Home and End go to the first and the last row that the user can select, not to the first and
//   the last column.
// - If there is no current row, MoveNext goes nowhere. Qt asks for it when the table gets the
//   focus.
// - If there is no current row, every other key goes to the first selected row, or else to the
//   first row that the user can select; Qt would stop at a group row.
QModelIndex TableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const bool first = !currentIndex().isValid();
    if (first && action == MoveNext) {
        return {};
    }
    if (action == MoveEnd) {
        return selectableIndex(_model->rowCount() - 1, -1);
    }
    if (action == MoveHome || first) {
        const bool onward = action != MoveHome && !_selectedRowIndexes.empty();
        return selectableIndex(onward ? _selectedRowIndexes.front() : 0, 1);
    }
    return QTableView::moveCursor(action, modifiers);
}

// The first row that the user can select, from `row` on, upwards or downwards by `step`.
QModelIndex TableView::selectableIndex(int row, int step) const {
    for (; row >= 0 && row < _model->rowCount(); row += step) {
        const QModelIndex index = _model->index(row, 0);
        if (_model->flags(index).testFlag(Qt::ItemIsSelectable)) {
            return index;
        }
    }
    return {};
}

void TableView::keyPressEvent(QKeyEvent* event) {
    _focusVisible = _focusVisible || !isModifier(event->key());
    if (event->key() == Qt::Key_Escape) {
        deselectAll();
    } else if (event->matches(QKeySequence::Copy)) {
        copy();
    } else {
        QTableView::keyPressEvent(event);
        selectWhereKeyLeads(event);
    }
    viewport()->update();
}

// Selects the row to which a key has led, even if that row was the current row already. Qt does
// nothing then, but Escape may have cleared the selection, or all rows may be selected.
void TableView::selectWhereKeyLeads(const QKeyEvent* event) {
    const bool moves = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down ||
                       event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown ||
                       event->key() == Qt::Key_Home || event->key() == Qt::Key_End;
    const bool extends = event->modifiers().testFlag(Qt::ShiftModifier);
    if (moves && !event->modifiers().testFlag(Qt::ControlModifier) &&
        (!extends || _selectedRowIndexes.empty()) &&
        currentIndex().flags().testFlag(Qt::ItemIsSelectable)) {
        selectionModel()->select(currentIndex(),
                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
}

void TableView::copy() const {
    QStringList lines;
    const auto addLine = [&](auto textOfColumn) {
        QStringList cells;
        for (int column = 0; column < _model->columnCount(); ++column) {
            cells.append(textOfColumn(column).toString());
        }
        lines.append(cells.join(u'\t'));
    };
    const auto addRow = [&](int row) {
        addLine([&](int column) { return _model->index(row, column).data(); });
    };
    addLine(
        [&](int column) { return _model->headerData(column, Qt::Horizontal, Qt::DisplayRole); });
    if (_selectedRowIndexes.empty()) {
        for (int row = 0; row < _model->rowCount(); ++row) {
            addRow(row);
        }
    } else {
        std::for_each(_selectedRowIndexes.begin(), _selectedRowIndexes.end(), addRow);
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

// Only the left button selects. In Qt all buttons do.
void TableView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    _focusVisible = false;
    // A press on a group row changes nothing, not even the start of the next range.
    const QModelIndex index = indexAt(event->pos());
    _pressedGroupRow = index.isValid() && !_model->flags(index).testFlag(Qt::ItemIsSelectable);
    if (!_pressedGroupRow) {
        QTableView::mousePressEvent(event);
    }
    viewport()->update();
}

void TableView::mouseMoveEvent(QMouseEvent* event) {
    if (!_pressedGroupRow) {
        QTableView::mouseMoveEvent(event);
    }
}

void TableView::focusInEvent(QFocusEvent* event) {
    const Qt::FocusReason reason = event->reason();
    _focusVisible = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                    reason == Qt::ShortcutFocusReason ||
                    (reason == Qt::ActiveWindowFocusReason && _focusVisible);
    QTableView::focusInEvent(event);
}

void TableView::fitRowHeight() {
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
}

}  // namespace ambulet
