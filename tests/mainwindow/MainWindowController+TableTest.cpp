#include "mainwindow/ControllerTest.h"
#include "support/Environment.h"
#include "text/LocalTime.h"

namespace ambulet {

namespace {

class TableTest : public ControllerTest {
  protected:
    static DailySteps day(int year, unsigned month, unsigned dayOfMonth, std::int64_t steps) {
        DailySteps made;
        made.setDate(startOfDay(std::chrono::year(year) / static_cast<int>(month) /
                                static_cast<int>(dayOfMonth)));
        made.setSteps(steps);
        return made;
    }

    static const MonthSummary& month(const DisplayRow& row) { return std::get<MonthSummary>(row); }
};

TEST_F(TableTest, noDaysGiveNoRows) {
    EXPECT_TRUE(makeController().buildDisplayRows({}).empty());
    load({});
    EXPECT_EQ(controller->numberOfRowsInTableView(), 0);
    EXPECT_EQ(controller->tableView()->model()->rowCount(), 0);
}

TEST_F(TableTest, aSingleDayGivesAMonthRowAndADayRow) {
    // 5280 steps at 2.5 feet are 2.5 miles.
    const DailySteps only = day(2025, 3, 2, 5280);
    const auto rows = makeController().buildDisplayRows(std::array{only});
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(month(rows[0]).title(), "March 2025");
    EXPECT_EQ(month(rows[0]).totalSteps(), 5280);
    EXPECT_EQ(month(rows[0]).avgSteps(), 5280);
    EXPECT_EQ(month(rows[0]).avgMiles(), 2.5);
    EXPECT_EQ(std::get<DailySteps>(rows[1]), only);
}

TEST_F(TableTest, monthsAndDaysKeepTheOrderOfTheList) {
    const std::array days = {day(2025, 3, 2, 1), day(2025, 3, 1, 2), day(2025, 2, 28, 3)};
    const auto rows = makeController().buildDisplayRows(days);
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_EQ(month(rows[0]).title(), "March 2025");
    EXPECT_EQ(std::get<DailySteps>(rows[1]), days[0]);
    EXPECT_EQ(std::get<DailySteps>(rows[2]), days[1]);
    EXPECT_EQ(month(rows[3]).title(), "February 2025");
    EXPECT_EQ(std::get<DailySteps>(rows[4]), days[2]);
}

TEST_F(TableTest, theSameMonthInTwoYearsGivesTwoMonthRows) {
    const std::array days = {day(2025, 1, 5, 10), day(2024, 1, 7, 20)};
    const auto rows = makeController().buildDisplayRows(days);
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(month(rows[0]).title(), "January 2025");
    EXPECT_EQ(month(rows[2]).title(), "January 2024");
}

TEST_F(TableTest, averagesArePerDayWithRecordsAndNotPerDayOfTheMonth) {
    // 1000 + 2000 + 6000 = 9000; / 3 = 3000. 2.5 × 9000 ÷ 5280 ÷ 3 = 1.420454…
    load({{"2025-03-03", "1000"}, {"2025-03-10", "2000"}, {"2025-03-28", "6000"}});
    const MonthSummary& march = month(controller->displayRows()[0]);
    EXPECT_EQ(march.totalSteps(), 9000);
    EXPECT_EQ(march.avgSteps(), 3000);
    EXPECT_NEAR(march.avgMiles(), 1.4204545, 1e-6);
    EXPECT_EQ(cell(0, "steps"), QStringLiteral("9,000"));
    EXPECT_EQ(cell(0, "avgSteps"), QStringLiteral("3,000"));
    EXPECT_EQ(cell(0, "avgMiles"), QStringLiteral("1.42"));
}

TEST_F(TableTest, monthsAndTheirTitlesAreThoseOfTheLocalesCalendar) {
    // The first day of the Persian year 1404 and the last two days of 1403.
    qputenv("LC_ALL", "fa_IR.UTF-8");
    const std::array days = {day(2025, 3, 21, 1), day(2025, 3, 20, 1), day(2025, 3, 19, 1)};
    const auto rows = makeController().buildDisplayRows(days);
    qputenv("LC_ALL", "en_US.UTF-8");
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_TRUE(std::holds_alternative<MonthSummary>(rows[2]));
    EXPECT_NE(month(rows[0]).title(), month(rows[2]).title());
}

// In Polish, March is "marca" in a date and "marzec" by itself.
TEST_F(TableTest, theTitleHasTheGrammaticalFormOfTheMonthNameInADate) {
    const ScopedLocale polish("pl_PL.UTF-8");
    const auto rows = makeController().buildDisplayRows(std::array{day(2025, 3, 2, 1)});
    EXPECT_EQ(month(rows[0]).title(), "marca 2025");
}

TEST_F(TableTest, aDayWithoutADateGetsAMonthRowWithoutATitle) {
    makeController();
    const auto rows = controller->buildDisplayRows(std::array{DailySteps()});
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(month(rows[0]).title(), std::nullopt);
}

TEST_F(TableTest, aDayWithoutADateBelongsToNoMonth) {
    makeController();
    DailySteps dated;
    dated.setDate(std::chrono::sys_days{std::chrono::year{2025} / 3 / 2});
    const auto rows = controller->buildDisplayRows(std::array{dated, DailySteps(), dated});
    EXPECT_EQ(rows.size(), 6U) << "each day has a month row of its own";
}

TEST_F(TableTest, theWidestTextsAreTheGreatestAndLeastNumbersTheTitlesAndOneDateOfEachMonth) {
    load({{"2025-03-02", "7"},
          {"2025-03-01", "123456"},
          {"2025-02-02", "-99999"},
          {"2025-02-01", "8"}});
    // Rows: March, 2nd, 1st, February, 2nd, 1st.
    using Rows = std::vector<int>;
    EXPECT_EQ(controller->rowsWithWidestTexts(QStringLiteral("date")), Rows({0, 1, 3, 4}));
    EXPECT_EQ(controller->rowsWithWidestTexts(QStringLiteral("steps")), Rows({3, 0, 4, 2}));
    EXPECT_EQ(controller->rowsWithWidestTexts(QStringLiteral("avgSteps")), Rows({3, 0}));
    EXPECT_EQ(controller->rowsWithWidestTexts(QStringLiteral("other")), Rows());
}

TEST_F(TableTest, anUnsortedListGivesOneMonthRowForEachRunOfDaysOfAMonth) {
    const std::array days = {day(2025, 1, 5, 1), day(2025, 2, 5, 1), day(2025, 1, 4, 1)};
    const auto rows = makeController().buildDisplayRows(days);
    ASSERT_EQ(rows.size(), 6U);
    EXPECT_EQ(month(rows[0]).title(), "January 2025");
    EXPECT_EQ(month(rows[2]).title(), "February 2025");
    EXPECT_EQ(month(rows[4]).title(), "January 2025");
}

TEST_F(TableTest, aMonthOfNoDaysHasZeroAverages) {
    const MonthSummary summary =
        MainWindowController::makeSummary({}, 2.5, DateFormatter::withPattern("MMMM yyyy"));
    EXPECT_EQ(summary.totalSteps(), 0);
    EXPECT_EQ(summary.avgSteps(), 0);
    EXPECT_EQ(summary.avgMiles(), 0);
}

TEST_F(TableTest, theTitleOfASummaryIsTheMonthOfTheFirstDayInTheList) {
    const MonthSummary summary =
        MainWindowController::makeSummary(std::array{day(2025, 3, 1, 4), day(2025, 2, 28, 2)}, 2.5,
                                          DateFormatter::withPattern("MMMM yyyy"));
    EXPECT_EQ(summary.title(), "March 2025");
}

TEST_F(TableTest, theAverageCellsOfADayAreEmpty) {
    load({{"2025-03-02", "4000"}});
    EXPECT_EQ(cell(0, "date"), QStringLiteral("March 2025"));
    EXPECT_EQ(cell(1, "date"), QStringLiteral("Mar 2, 2025"));
    EXPECT_EQ(cell(1, "steps"), QStringLiteral("4,000"));
    EXPECT_TRUE(cell(1, "avgSteps").isNull());
    EXPECT_TRUE(cell(1, "avgMiles").isNull());
}

TEST_F(TableTest, aColumnWithAnUnknownIdentifierIsEmpty) {
    load({{"2025-03-02", "4000"}});
    EXPECT_TRUE(cell(0, "Date").isNull());
    EXPECT_TRUE(cell(1, "other").isNull());
}

TEST_F(TableTest, onlyDaysCanBeSelected) {
    load({{"2025-03-02", "4000"}});
    EXPECT_TRUE(controller->isGroupRow(0));
    EXPECT_FALSE(controller->shouldSelectRow(0));
    EXPECT_FALSE(controller->isGroupRow(1));
    EXPECT_TRUE(controller->shouldSelectRow(1));
}

TEST_F(TableTest, aClickOnAMonthRowKeepsTheSelection) {
    load({{"2025-03-02", "4000"}, {"2025-02-02", "4000"}});
    click(1);
    click(2);
    EXPECT_EQ(controller->tableView()->selectedRowIndexes(), std::vector<int>({1}));
}

TEST_F(TableTest, aNewStrideChangesOnlyTheAverageMiles) {
    load({{"2025-03-02", "4000"}, {"2025-02-02", "9000"}});
    const std::vector<DisplayRow> before = controller->displayRows();
    defaults.setDouble(SettingsKeys::strideFootLength, 3.0);
    controller->rebuildDisplayRows();
    for (const std::size_t row : {0U, 2U}) {
        const MonthSummary& was = month(before[row]);
        const MonthSummary& is = month(controller->displayRows()[row]);
        EXPECT_EQ(is.totalSteps(), was.totalSteps());
        EXPECT_EQ(is.avgSteps(), was.avgSteps());
        EXPECT_DOUBLE_EQ(is.avgMiles(), was.avgMiles() * 1.2);
    }
}

TEST_F(TableTest, rebuildingTheRowsKeepsTheSelectionAndTheStatistics) {
    load({{"2025-03-02", "4000"}, {"2025-03-01", "9000"}});
    click(2);
    controller->daysLabel()->setText(QStringLiteral("as it was"));
    controller->rebuildDisplayRows();
    EXPECT_EQ(controller->tableView()->selectedRowIndexes(), std::vector<int>({2}));
    EXPECT_EQ(controller->daysLabel()->text(), QStringLiteral("as it was"));
}

TEST_F(TableTest, aStrideOfZeroGivesZeroMiles) {
    defaults.setDouble(SettingsKeys::strideFootLength, 0);
    load({{"2025-03-02", "4000"}});
    EXPECT_EQ(cell(0, "avgMiles"), QStringLiteral("0.00"));
}

}  // namespace

}  // namespace ambulet
