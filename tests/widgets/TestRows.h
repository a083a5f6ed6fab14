#pragma once

#include "widgets/TableViewDataSource.h"

#include <map>
#include <numeric>
#include <string>

namespace ambulet {

/// A data source described by one letter for each row: 'G' for a group row, 'd' for a selectable
/// row. The text of a cell is the column's identifier and the row number, such as "b3". The cells
/// of the column "empty" are empty.
struct TestRows : TableViewDataSource {
    std::string kinds;
    int notifications = 0;
    QString emptyText;
    std::map<int, QString> textOfRow;  // replaces the texts of all cells of a row

    explicit TestRows(std::string rows) : kinds(std::move(rows)) {}

    int numberOfRowsInTableView() const override { return static_cast<int>(kinds.size()); }
    QString objectValueForTableColumn(const QString& identifier, int row) const override {
        if (const auto own = textOfRow.find(row); own != textOfRow.end()) {
            return own->second;
        }
        return identifier == QLatin1String("empty") ? QString() : identifier + QString::number(row);
    }
    std::vector<int> rowsWithWidestTexts(const QString& /*identifier*/) const override {
        std::vector<int> all(kinds.size());
        std::iota(all.begin(), all.end(), 0);
        return all;
    }
    QString textOfEmptyTable() const override { return emptyText; }
    bool isGroupRow(int row) const override {
        return kinds.at(static_cast<std::size_t>(row)) == 'G';
    }
    bool shouldSelectRow(int row) const override { return !isGroupRow(row); }
    void tableViewSelectionDidChange() override { ++notifications; }
};

}  // namespace ambulet
