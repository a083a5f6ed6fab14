#include "widgets/TableModel.h"

#include "widgets/TableViewDataSource.h"

#include <QFont>

#include <utility>

namespace ambulet {

void TableModel::setDataSource(TableViewDataSource* dataSource) {
    beginResetModel();
    _dataSource = dataSource;
    _rowCount = _dataSource == nullptr ? 0 : _dataSource->numberOfRowsInTableView();
    endResetModel();
}

void TableModel::setColumns(std::vector<TableColumn> columns) {
    beginResetModel();
    _columns = std::move(columns);
    endResetModel();
}

void TableModel::reload() {
    setDataSource(_dataSource);
}

int TableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : _rowCount;
}

int TableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(_columns.size());
}

const TableColumn& TableModel::columnOf(const QModelIndex& index) const {
    return _columns[static_cast<std::size_t>(index.column())];
}

bool TableModel::hasRowOf(const QModelIndex& index) const {
    return index.isValid() && _dataSource != nullptr &&
           index.row() < _dataSource->numberOfRowsInTableView();
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
    if (!hasRowOf(index)) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole: {
        const QString text =
            _dataSource->objectValueForTableColumn(columnOf(index).identifier, index.row());
        return text.isNull() ? QVariant() : QVariant(text);
    }
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(columnOf(index).alignment | Qt::AlignVCenter);
    case Qt::FontRole:
        if (_dataSource->isGroupRow(index.row())) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        return {};
    case Qt::AccessibleDescriptionRole:
        return _dataSource->isGroupRow(index.row())
                   ? QStringLiteral("Heading of the rows that follow")
                   : QVariant();
    case groupRole:
        return _dataSource->isGroupRow(index.row());
    default:
        return {};
    }
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical && role == Qt::AccessibleTextRole && !_columns.empty()) {
        return index(section, 0).data();
    }
    if (orientation != Qt::Horizontal || section < 0 ||
        static_cast<std::size_t>(section) >= _columns.size()) {
        return {};
    }
    const TableColumn& column = _columns[static_cast<std::size_t>(section)];
    switch (role) {
    case Qt::DisplayRole:
        return column.title;
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(column.alignment | Qt::AlignVCenter);
    default:
        return {};
    }
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const {
    // Without ItemIsEnabled, arrow keys skip the row, a click on the row does not change the
    // selection, and a range of selected rows continues after the row.
    return hasRowOf(index) && _dataSource->shouldSelectRow(index.row())
               ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
               : Qt::NoItemFlags;
}

}  // namespace ambulet
