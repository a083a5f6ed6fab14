#include "mainwindow/ControllerTest.h"
#include "support/Environment.h"

namespace ambulet {

namespace {

using MainWindowControllerTest = ControllerTest;

TEST_F(MainWindowControllerTest, theRememberedPathIsKnownAfterConstruction) {
    EXPECT_EQ(makeController(QStringLiteral("/tmp/export.xml")).filePath(),
              QStringLiteral("/tmp/export.xml"));
}

TEST_F(MainWindowControllerTest, aPathThatIsOnlyARegisteredDefaultIsIgnored) {
    defaults.registerDefaults({{SettingsKeys::xmlFilePath, QStringLiteral("/tmp/export.xml")}});
    EXPECT_EQ(makeController().filePath(), std::nullopt);
}

TEST_F(MainWindowControllerTest, theStrideIsTwoAndAHalfFeetUntilOneIsStored) {
    makeController();
    EXPECT_EQ(defaults.doubleForKey(SettingsKeys::strideFootLength), 2.5);
    defaults.setDouble(SettingsKeys::strideFootLength, 3.25);
    makeController();
    EXPECT_EQ(defaults.doubleForKey(SettingsKeys::strideFootLength), 3.25);
}

TEST_F(MainWindowControllerTest, theDefaultStrideIsNotStored) {
    makeController();
    EXPECT_EQ(defaults.persistent(SettingsKeys::strideFootLength), std::nullopt);
}

TEST_F(MainWindowControllerTest, aNewControllerHasNoDaysAndNoWindow) {
    makeController();
    EXPECT_TRUE(controller->allSteps().empty());
    EXPECT_TRUE(controller->displayRows().empty());
    EXPECT_FALSE(controller->isWindowLoaded());
    EXPECT_EQ(controller->tableView(), nullptr);
}

// The averages of the two months are 7000.5 and 7001.5.
TEST_F(MainWindowControllerTest, stepsAreWholeNumbersRoundedHalfToEven) {
    load({{"2025-03-01", "7000"},
          {"2025-03-02", "7001"},
          {"2025-02-01", "7001"},
          {"2025-02-02", "7002"}});
    EXPECT_EQ(cell(0, "avgSteps"), QStringLiteral("7,000"));
    EXPECT_EQ(cell(3, "avgSteps"), QStringLiteral("7,002"));
}

// 3000 steps of 2.5 feet are 1.42045… miles; 6336 steps are 3 miles.
TEST_F(MainWindowControllerTest, milesAlwaysHaveTwoDecimals) {
    load({{"2025-03-01", "3000"}, {"2025-02-01", "6336"}});
    EXPECT_EQ(cell(0, "avgMiles"), QStringLiteral("1.42"));
    EXPECT_EQ(cell(2, "avgMiles"), QStringLiteral("3.00"));
}

TEST_F(MainWindowControllerTest, datesAreInTheMediumStyleWithoutATime) {
    load({{"2025-03-02", "1"}});
    EXPECT_EQ(cell(1, "date"), QStringLiteral("Mar 2, 2025"));
}

TEST_F(MainWindowControllerTest, datesAreInTheMediumStyleOfTheUsersLocale) {
    const ScopedLocale german("de_DE.UTF-8");
    load({{"2025-03-02", "1"}});
    EXPECT_EQ(cell(1, "date"), QStringLiteral("02.03.2025"));
    EXPECT_EQ(controller->fromLabel()->text(), QStringLiteral("From: 02.03.2025"));
}

TEST_F(MainWindowControllerTest, aPathStoredByAnotherCopyOfTheProgramIsNotLoaded) {
    load({{"2025-03-02", "1"}, {"2025-03-01", "1"}});
    defaults.setString(SettingsKeys::xmlFilePath, writeExport("other.xml", {{"2025-03-02", "1"}}));
    controller->loadData();
    waitForLoad();
    EXPECT_EQ(controller->allSteps().size(), 2U);
}

TEST_F(MainWindowControllerTest, theControllerWorksWithoutAViewThatWasDestroyed) {
    load({{"2025-03-02", "1"}});
    for (QWidget* view : std::initializer_list<QWidget*>{
             controller->fromLabel(), controller->toLabel(), controller->daysLabel(),
             controller->totalLabel(), controller->averageLabel(), controller->milesLabel(),
             controller->progressIndicator(), controller->filePathField(),
             controller->separatorBox(), controller->tableView()}) {
        delete view;
    }
    EXPECT_EQ(controller->tableView(), nullptr);
    EXPECT_EQ(controller->scrollView(), nullptr);
    controller->setupTableColumns();
    controller->rebuildDisplayRows();
    controller->recomputeStats();
    controller->statusLabel()->clear();
    controller->loadData();
    waitForLoad();
    delete controller->statusLabel();
    delete controller->controlsPanel();
    controller->loadData();
}

}  // namespace

}  // namespace ambulet
