#pragma once

#include "widgets/TableColumn.h"

#include <QAbstractTableModel>

#include <vector>

namespace ambulet {

class TableViewDataSource;

/// Gives a data source's rows to Qt's item views. Nothing is cached: each text is asked for when it
/// is shown. Without a data source there are no rows.
class TableModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// For a row that heads a group, true.
    static constexpr int groupRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void setDataSource(TableViewDataSource* dataSource);
    TableViewDataSource* dataSource() const { return _dataSource; }
    void setColumns(std::vector<TableColumn> columns);
    const std::vector<TableColumn>& columns() const { return _columns; }

    /// The rows are other ones now.
    void reload();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

  private:
    // The data source may have lost rows that the views still ask for.
    bool isShown(const QModelIndex& index) const;
    const TableColumn& columnOf(const QModelIndex& index) const;

    TableViewDataSource* _dataSource = nullptr;
    std::vector<TableColumn> _columns;
    // What the views were last told; the data source may be ahead of them until `reload`.
    int _rowCount = 0;
};

}  // namespace ambulet
