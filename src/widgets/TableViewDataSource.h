#pragma once

#include <QString>

#include <vector>

namespace ambulet {

/// What a TableView asks for its contents, and tells of its selection. Main thread only.
class TableViewDataSource {
  public:
    virtual int numberOfRowsInTableView() const = 0;

    /// The text of a cell, null for an empty one. `identifier` is the column's.
    virtual QString objectValueForTableColumn(const QString& identifier, int row) const = 0;

    /// Rows of which one has the column's widest text, if all digits were equally wide and group
    /// rows were not bold. To be told without making the texts of all rows.
    virtual std::vector<int> rowsWithWidestTexts(const QString& identifier) const = 0;

    /// What to show in the middle of the table while it has no rows; null for nothing.
    virtual QString textOfEmptyTable() const = 0;

    /// Whether the row heads the rows after it, up to the next such row: it is drawn bold, on a
    /// band, and stays at the top of the table while its rows scroll.
    virtual bool isGroupRow(int row) const = 0;

    /// Whether the user can select the row.
    virtual bool shouldSelectRow(int row) const = 0;

    /// The set of selected rows is another one now. Not called for changes by `reloadData`.
    virtual void tableViewSelectionDidChange() = 0;

  protected:
    ~TableViewDataSource() = default;
};

}  // namespace ambulet
