#pragma once

#include "widgets/TableColumn.h"

#include <QTableView>

#include <vector>

class QHelpEvent;

namespace ambulet {

class TableModel;
class TableViewDataSource;

/// A table of whole-row selections under fixed columns, filled by a data source: group rows on a
/// band, several rows selected at once, a selection that outlives a reload of the data. The last
/// column takes up what the others leave. Escape clears the selection, Ctrl+C copies.
///
/// The group row of the topmost rows stays at the top while they scroll, until the next group row
/// pushes it away: there it is drawn over the rows, and what is done to it there is done to it.
///
/// Each column is as wide as its widest text. Where the user has made it narrower, what is cut ends
/// in an ellipsis and is whole in a tooltip. Main thread only.
class TableView : public QTableView {
    Q_OBJECT

  public:
    explicit TableView(QWidget* parent = nullptr);

    /// Not owned; null shows no rows.
    void setDataSource(TableViewDataSource* dataSource);

    /// In place of all columns that there were.
    void setColumns(std::vector<TableColumn> columns);
    const std::vector<TableColumn>& columns() const;

    /// Asks the data source for everything anew. The selected indexes and the scroll position stay
    /// as far as there still are such rows; nobody is told of it.
    void reloadData();

    /// Ascending. Rows that the user could not select are here too where `selectRowIndexes` was
    /// given them.
    const std::vector<int>& selectedRowIndexes() const { return _selectedRowIndexes; }

    /// Selects just these rows, selectable by the user or not; those that do not exist are left
    /// out.
    void selectRowIndexes(std::vector<int> rows);

    void deselectAll();

    bool isRowSelected(int row) const;

    /// Where the group row of the topmost rows is drawn, in the viewport; null where it stands in
    /// its own place, or where the topmost rows have none.
    QRect pinnedRect() const;

    QModelIndex indexAt(const QPoint& point) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

    /// Puts the selected rows on the clipboard, or all rows where none is selected: as they are
    /// shown, a row a line under a line of the headers, the cells set apart by tabs.
    void copy() const;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

  private:
    QModelIndex selectableIndex(int row, int step) const;
    void selectWhereKeyLeads(const QKeyEvent* event);
    void showSelection();
    void setSelectedRowIndexes(std::vector<int> rows);
    void columnDidResize(int column, int oldWidth, int newWidth);
    void fitLastColumn();
    void fitRowHeight();
    void fitColumnsToTexts();
    int widthOfTexts(int column) const;
    int spaceBesideTexts() const;
    int pinnedRow() const;
    void paintPinnedRow(QPainter& painter) const;
    void paintTextOfEmptyTable(QPainter& painter) const;
    void paintFocus(QPainter& painter) const;
    bool showToolTip(const QHelpEvent& event);

    TableModel* _model;
    // Kept here and not in Qt's selection model, which forgets all at a reset and cannot hold rows
    // that the user may not select.
    std::vector<int> _selectedRowIndexes;
    bool _showingSelection = false;
    // Of each column, the width that it has by the table's own doing; the user may have set
    // another.
    std::vector<int> _ownWidths;
    bool _focusVisible = false;
    bool _pressedGroupRow = false;
};

}  // namespace ambulet
