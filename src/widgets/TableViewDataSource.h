#pragma once

#include <QString>

namespace ambulet {

/// What a TableView asks for its contents, and tells of its selection. Main thread only.
class TableViewDataSource {
  public:
    virtual int numberOfRowsInTableView() const = 0;

    /// The text of a cell, null for an empty one. `identifier` is the column's.
    virtual QString objectValueForTableColumn(const QString& identifier, int row) const = 0;

    /// Whether the row heads a group: it is drawn bold, on a band.
    virtual bool isGroupRow(int row) const = 0;

    /// Whether the user can select the row.
    virtual bool shouldSelectRow(int row) const = 0;

    /// The set of selected rows is another one now. Not called for changes by `reloadData`.
    virtual void tableViewSelectionDidChange() = 0;

  protected:
    ~TableViewDataSource() = default;
};

}  // namespace ambulet
