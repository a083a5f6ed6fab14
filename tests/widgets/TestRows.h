#pragma once

#include "widgets/TableViewDataSource.h"

#include <algorithm>
#include <string>

namespace ambulet {

/// A data source of one letter a row: 'G' a group row, 'd' a row that can be selected. The cells
/// hold the column's identifier and the row, as in "b3"; the column "empty" holds none.
struct TestRows : TableViewDataSource {
    std::string kinds;
    int notifications = 0;

    explicit TestRows(std::string rows) : kinds(std::move(rows)) {}

    int numberOfRowsInTableView() const override { return static_cast<int>(kinds.size()); }
    QString objectValueForTableColumn(const QString& identifier, int row) const override {
        return identifier == QLatin1String("empty") ? QString() : identifier + QString::number(row);
    }
    bool isGroupRow(int row) const override {
        return kinds.at(static_cast<std::size_t>(row)) == 'G';
    }
    bool shouldSelectRow(int row) const override { return !isGroupRow(row); }
    void tableViewSelectionDidChange() override { ++notifications; }
};

}  // namespace ambulet
