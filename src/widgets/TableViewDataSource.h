#pragma once

#include <QString>

#include <vector>

namespace ambulet {

/// Supplies the contents of a TableView, and is notified of its selection. Main thread only.
class TableViewDataSource {
  public:
    virtual int numberOfRowsInTableView() const = 0;

    /// The text of a cell; null if the cell is empty. `identifier`: the column's.
    virtual QString objectValueForTableColumn(const QString& identifier, int row) const = 0;

    /// A few rows, among them the row with the column's widest text. "Widest" assumes that all
    /// digits are equally wide and that group rows are not bold. Must not format the texts of all
    /// rows.
    virtual std::vector<int> rowsWithWidestTexts(const QString& identifier) const = 0;

    /// The text that is shown in the middle of the table while it has no rows; null for none.
    virtual QString textOfEmptyTable() const = 0;

    /// Whether the row heads the rows up to the next group row. Group rows are bold, have a
    /// background of their own, and stay at the top of the table while their rows scroll.
    virtual bool isGroupRow(int row) const = 0;

    /// Whether the user can select the row.
    virtual bool shouldSelectRow(int row) const = 0;

    /// The set of selected rows has changed. Not called for changes by `reloadData`.
    virtual void tableViewSelectionDidChange() = 0;

  protected:
    ~TableViewDataSource() = default;
};

}  // namespace ambulet
