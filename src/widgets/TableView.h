#pragma once

#include "widgets/TableColumn.h"

#include <QTableView>

#include <vector>

class QHelpEvent;

namespace ambulet {

class TableModel;
class TableViewDataSource;

/// A table that shows the rows of a data source. Main thread only.
///
/// - Selection: any number of whole rows. It is kept when the data is reloaded. Escape clears it,
///   Ctrl+C copies it.
/// - Group rows: each heads the rows up to the next one, and stays at the top of the table while
///   they scroll ("pinned"), until the next group row pushes it away. The mouse works on a pinned
///   row as on any other group row.
/// - Columns: each is wide enough for its widest text, unless the user has made it narrower. The
///   last column takes the rest of the width. A text that does not fit ends with an ellipsis, and
///   the tooltip has the whole text.
class TableView : public QTableView {
    Q_OBJECT

  public:
    explicit TableView(QWidget* parent = nullptr);

    /// Sets the data source, which is not owned. Null shows no rows.
    void setDataSource(TableViewDataSource* dataSource);

    /// Replaces all columns.
    void setColumns(std::vector<TableColumn> columns);
    const std::vector<TableColumn>& columns() const;

    /// Reads everything from the data source again. The selected indexes and the scroll position
    /// are kept as far as those rows still exist. The data source is not notified.
    void reloadData();

    /// The selected rows, in ascending order. Includes rows that only `selectRowIndexes` can
    /// select.
    const std::vector<int>& selectedRowIndexes() const { return _selectedRowIndexes; }

    /// Selects these rows and no others, even rows that the user cannot select. Rows that do not
    /// exist are ignored.
    void selectRowIndexes(std::vector<int> rows);

    void deselectAll();

    bool isRowSelected(int row) const;

    /// The rectangle of the pinned group row, in the viewport. Null if none is pinned, because the
    /// group row is wholly visible in its own place, or because the topmost row has no group row.
    QRect pinnedRect() const;

    QModelIndex indexAt(const QPoint& point) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

    /// Puts the selected rows on the clipboard, or all rows if none is selected: the texts as
    /// shown, separated by tabs, one line for each row, after a line with the column titles.
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
    // Kept here because Qt's selection model forgets everything at a reset, and cannot hold rows
    // that the user cannot select.
    std::vector<int> _selectedRowIndexes;
    bool _showingSelection = false;
    // The widths that the table itself gave to the columns. If a column has another width, the user
    // set it.
    std::vector<int> _ownWidths;
    int _lastTextsWidth = 0;  // what the texts of the last column need
    bool _focusVisible = false;
    bool _pressedGroupRow = false;
};

}  // namespace ambulet
