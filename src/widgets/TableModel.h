#pragma once

#include "widgets/TableColumn.h"

#include <QAbstractTableModel>

#include <vector>

namespace ambulet {

class TableViewDataSource;

/// Qt's model of the rows of a data source. No text is cached: the data source is asked for a text
/// each time a view needs it. Without a data source there are no rows.
class TableModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// The role under which a cell says whether it is in a group row.
    static constexpr int groupRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void setDataSource(TableViewDataSource* dataSource);
    TableViewDataSource* dataSource() const { return _dataSource; }
    void setColumns(std::vector<TableColumn> columns);
    const std::vector<TableColumn>& columns() const { return _columns; }

    /// Reads the number of rows again, and tells the views that the rows have changed.
    void reload();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

  private:
    // Whether the data source has the row. Until `reload`, the views may ask for a row that it no
    // longer has.
    bool hasRowOf(const QModelIndex& index) const;
    const TableColumn& columnOf(const QModelIndex& index) const;

    TableViewDataSource* _dataSource = nullptr;
    std::vector<TableColumn> _columns;
    // The number of rows that the views know. Until `reload`, the data source may have another one.
    int _rowCount = 0;
};

}  // namespace ambulet
