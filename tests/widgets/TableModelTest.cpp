#include "widgets/TableModel.h"

#include "widgets/TestRows.h"

#include <QAbstractItemModelTester>
#include <QFont>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

const std::vector<TableColumn> columns = {
    {QStringLiteral("a"), QStringLiteral("First"), 100, 50, Qt::AlignLeading},
    {QStringLiteral("empty"), QStringLiteral("Second"), 100, 50, Qt::AlignRight},
};

TEST(TableModel, passesQtsModelTester) {
    TestRows rows("GddGd");
    TableModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setColumns(columns);
    model.setDataSource(&rows);
    rows.kinds = "Gd";
    model.reload();
    model.setDataSource(nullptr);
}

TEST(TableModel, cellsHaveTheTextsOfTheDataSource) {
    TestRows rows("Gd");
    TableModel model;
    model.setColumns(columns);
    model.setDataSource(&rows);
    EXPECT_EQ(model.index(1, 0).data(), QStringLiteral("a1"));
    EXPECT_FALSE(model.index(1, 1).data().isValid());
}

TEST(TableModel, groupRowsAreBoldAndHaveNoFlags) {
    TestRows rows("Gd");
    TableModel model;
    model.setColumns(columns);
    model.setDataSource(&rows);
    EXPECT_TRUE(model.index(0, 0).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(model.index(1, 0).data(Qt::FontRole).isValid());
    EXPECT_EQ(model.flags(model.index(0, 0)), Qt::NoItemFlags);
    EXPECT_TRUE(model.flags(model.index(1, 0)).testFlag(Qt::ItemIsSelectable));
}

TEST(TableModel, headersAndCellsHaveTheAlignmentOfTheirColumn) {
    TestRows rows("d");
    TableModel model;
    model.setColumns(columns);
    model.setDataSource(&rows);
    const auto alignment = [](const QVariant& value) { return value.value<Qt::Alignment>(); };
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole), QStringLiteral("Second"));
    EXPECT_EQ(alignment(model.headerData(1, Qt::Horizontal, Qt::TextAlignmentRole)),
              Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(alignment(model.index(0, 1).data(Qt::TextAlignmentRole)),
              Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(alignment(model.headerData(0, Qt::Horizontal, Qt::TextAlignmentRole)),
              Qt::AlignLeading | Qt::AlignVCenter);
}

TEST(TableModel, aDataSourceIsNotAskedForRowsThatItNoLongerHas) {
    TestRows rows("Gdd");
    TableModel model;
    model.setColumns(columns);
    model.setDataSource(&rows);
    rows.kinds.clear();
    EXPECT_FALSE(model.index(2, 0).data().isValid());
    EXPECT_EQ(model.flags(model.index(2, 0)), Qt::NoItemFlags);
}

TEST(TableModel, assistiveProgramsGetRowsNamedByTheirFirstCellAndGroupRowsAsHeadings) {
    TestRows rows("Gd");
    TableModel model;
    model.setColumns(columns);
    model.setDataSource(&rows);
    const auto description = [&](int row) {
        return model.index(row, 0).data(Qt::AccessibleDescriptionRole);
    };
    EXPECT_EQ(description(0).toString(), QStringLiteral("Heading of the rows that follow"));
    EXPECT_FALSE(description(1).isValid());
    EXPECT_EQ(model.headerData(1, Qt::Vertical, Qt::AccessibleTextRole).toString(),
              QStringLiteral("a1"));
}

}  // namespace

}  // namespace ambulet
