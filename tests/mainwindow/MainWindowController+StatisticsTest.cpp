#include "mainwindow/ControllerTest.h"
#include "support/Environment.h"
#include "text/LocalTime.h"

#include <QProcess>

#include <clocale>
#include <limits>

namespace ambulet {

namespace {

class StatisticsTest : public ControllerTest {
  protected:
    // The texts of the six labels.
    QStringList texts() const {
        QStringList all;
        for (const QLabel* label : statisticsLabels()) {
            all.append(label->text());
        }
        return all;
    }

    // The bold labels, each by a letter: f(rom), t(o), d(ays), s(teps), m(iles), a(verage).
    QString bold() const {
        QString letters;
        for (std::size_t i = 0; i < 6; ++i) {
            if (statisticsLabels().at(i)->font().bold()) {
                letters.append(u"ftdsma"[i]);
            }
        }
        return letters;
    }

    const QStringList none = {QStringLiteral("From: —"),  QStringLiteral("To: —"),
                              QStringLiteral("Days: 0"),  QStringLiteral("Steps: —"),
                              QStringLiteral("Miles: —"), QStringLiteral("Average: —")};
};

TEST_F(StatisticsTest, aSelectionIsSummedUp) {
    // 4000 + 10000 + 7000 = 21000; × 2.5 ÷ 5280 = 9.9432; ÷ 3 = 3.3144.
    load({{"2025-03-02", "4000"},
          {"2025-03-01", "10000"},
          {"2025-02-27", "7000"},
          {"2025-02-26", "1"}});
    // Rows: March 2025, 2nd, 1st, February 2025, 27th, 26th.
    click(1);
    click(4, Qt::ShiftModifier);
    EXPECT_EQ(texts(),
              QStringList({QStringLiteral("From: Feb 27, 2025"), QStringLiteral("To: Mar 2, 2025"),
                           QStringLiteral("Days: 3"), QStringLiteral("Steps: 21,000"),
                           QStringLiteral("Miles: 9.94 @ 2.50 ft/step"),
                           QStringLiteral("Average: 7,000 steps/day, 3.31 miles/day")}));
    EXPECT_EQ(bold(), QStringLiteral("ft"));
}

TEST_F(StatisticsTest, allDaysCountAndNoLabelIsBoldIfNothingIsSelected) {
    load({{"2025-03-02", "4000"}, {"2025-02-27", "7000"}});
    EXPECT_EQ(texts().mid(0, 4),
              QStringList({QStringLiteral("From: Feb 27, 2025"), QStringLiteral("To: Mar 2, 2025"),
                           QStringLiteral("Days: 2"), QStringLiteral("Steps: 11,000")}));
    EXPECT_EQ(bold(), QString());
}

TEST_F(StatisticsTest, oneSelectedDayIsFirstAndLastAndBothLabelsAreBold) {
    load({{"2025-03-02", "4000"}, {"2025-02-27", "7000"}});
    click(1);
    EXPECT_EQ(texts().mid(0, 3),
              QStringList({QStringLiteral("From: Mar 2, 2025"), QStringLiteral("To: Mar 2, 2025"),
                           QStringLiteral("Days: 1")}));
    EXPECT_EQ(bold(), QStringLiteral("ft"));
    click(1, Qt::ControlModifier);
    EXPECT_EQ(texts()[2], QStringLiteral("Days: 2"));
    EXPECT_EQ(bold(), QString());
}

TEST_F(StatisticsTest, averagesArePerSelectedDayAndNotPerCalendarDay) {
    // (1000 + 4000) ÷ 2 = 2500; 5000 × 2.5 ÷ 5280 ÷ 2 = 1.1837.
    load({{"2025-03-09", "1000"}, {"2025-03-05", "77"}, {"2025-03-02", "4000"}});
    click(1);
    click(3, Qt::ControlModifier);
    EXPECT_EQ(texts()[2], QStringLiteral("Days: 2"));
    EXPECT_EQ(texts()[5], QStringLiteral("Average: 2,500 steps/day, 1.18 miles/day"));
}

TEST_F(StatisticsTest, averageStepsAreRoundedHalfToEven) {
    // 3 ÷ 2 = 1.5 and 5 ÷ 2 = 2.5.
    load({{"2025-03-02", "1"}, {"2025-03-01", "2"}});
    EXPECT_TRUE(texts()[5].startsWith(QStringLiteral("Average: 2 steps/day")));
    load({{"2025-03-02", "3"}, {"2025-03-01", "2"}});
    EXPECT_TRUE(texts()[5].startsWith(QStringLiteral("Average: 2 steps/day")));
}

TEST_F(StatisticsTest, aSelectionOfMonthRowsHasNoDaysAndBoldLabels) {
    load({{"2025-03-02", "4000"}, {"2025-02-27", "7000"}});
    controller->tableView()->selectRowIndexes({0, 2});
    EXPECT_EQ(texts(), none);
    EXPECT_EQ(bold(), QStringLiteral("ft"));
}

TEST_F(StatisticsTest, aMonthRowAmongSelectedDaysAddsNothing) {
    load({{"2025-03-02", "4000"}, {"2025-02-27", "7000"}, {"2025-02-26", "1"}});
    controller->tableView()->selectRowIndexes({1, 2, 3});
    EXPECT_EQ(texts()[2], QStringLiteral("Days: 2"));
    EXPECT_EQ(texts()[3], QStringLiteral("Steps: 11,000"));
}

TEST_F(StatisticsTest, theLabelsShowDashesAndAreNotBoldIfThereAreNoDays) {
    load(std::initializer_list<TestRecord>{});
    EXPECT_EQ(texts(), none);
    EXPECT_EQ(bold(), QString());
}

TEST_F(StatisticsTest, theStrideIsShownWithTwoDecimalsButComputedWithAll) {
    // 1000000 × 2.456 ÷ 5280 = 465.1515; at 2.46 it would be 465.9091.
    defaults.setDouble(SettingsKeys::strideFootLength, 2.456);
    load({{"2025-03-02", "1000000"}});
    EXPECT_EQ(texts()[4], QStringLiteral("Miles: 465.15 @ 2.46 ft/step"));
}

TEST_F(StatisticsTest, theShownStrideIsRoundedHalfToEven) {
    load({{"2025-03-02", "5280"}});
    for (const auto& [stride, text] :
         {std::pair(2.125, "2.12"), {2.375, "2.38"}, {2.625, "2.62"}}) {
        defaults.setDouble(SettingsKeys::strideFootLength, stride);
        controller->recomputeStats();
        EXPECT_TRUE(texts()[4].endsWith(QStringLiteral(" @ %1 ft/step").arg(QLatin1String(text))))
            << qPrintable(texts()[4]);
        controller->strideDidClick();
        EXPECT_EQ(controller->strideEditor()->text(), QLatin1String(text));
    }
}

TEST_F(StatisticsTest, theStrideHasADecimalPointAndNoThousandsSeparatorEvenInGerman) {
    // Makes a locale with a decimal comma, because the system may have none.
    const QString source = QStringLiteral("de_DE");
    ASSERT_EQ(QProcess::execute(QStringLiteral("localedef"),
                                {QStringLiteral("--force"), QStringLiteral("--quiet"),
                                 QStringLiteral("-i"), source, QStringLiteral("-f"),
                                 QStringLiteral("UTF-8"), path("comma")}),
              0);
    qputenv("LOCPATH", folder.path().toUtf8());
    ASSERT_NE(std::setlocale(LC_NUMERIC, "comma"), nullptr);
    ASSERT_EQ(std::string(std::localeconv()->decimal_point), ",");
    qputenv("LC_ALL", "de_DE.UTF-8");
    defaults.setDouble(SettingsKeys::strideFootLength, 1234.5);
    // 21120 × 1234.5 ÷ 5280 = 4938
    load({{"2025-03-02", "21120"}});
    qputenv("LC_ALL", "en_US.UTF-8");
    std::setlocale(LC_NUMERIC, "C");
    qunsetenv("LOCPATH");
    EXPECT_EQ(texts()[4], QStringLiteral("Miles: 4.938,00 @ 1234.50 ft/step"));
}

TEST_F(StatisticsTest, aStrideOfZeroGivesZeroMiles) {
    defaults.setDouble(SettingsKeys::strideFootLength, 0);
    load({{"2025-03-02", "4000"}});
    EXPECT_EQ(texts()[4], QStringLiteral("Miles: 0.00 @ 0.00 ft/step"));
    EXPECT_EQ(texts()[5], QStringLiteral("Average: 4,000 steps/day, 0.00 miles/day"));
}

TEST_F(StatisticsTest, aChangedStrideIsShownAtTheNextUpdate) {
    load({{"2025-03-02", "5280"}});
    defaults.setDouble(SettingsKeys::strideFootLength, 4);
    controller->recomputeStats();
    EXPECT_EQ(texts()[4], QStringLiteral("Miles: 4.00 @ 4.00 ft/step"));
}

TEST_F(StatisticsTest, fromIsTheLastDayOfAnUnsortedListAndToTheFirst) {
    load({{"2025-03-02", "1"}});
    std::vector<DailySteps> unordered(2);
    using namespace std::chrono_literals;
    unordered[0].setDate(startOfDay(2024y / 5 / 1));
    unordered[1].setDate(startOfDay(2024y / 6 / 1));
    controller->updateStatsForSteps(unordered);
    EXPECT_EQ(texts()[0], QStringLiteral("From: Jun 1, 2024"));
    EXPECT_EQ(texts()[1], QStringLiteral("To: May 1, 2024"));
}

TEST_F(StatisticsTest, theNumberOfDaysHasNoThousandsSeparator) {
    load({{"2025-03-02", "1"}});
    std::vector<DailySteps> days(1234);
    for (DailySteps& day : days) {
        day.setDate(std::chrono::sys_seconds());
    }
    controller->updateStatsForSteps(days);
    EXPECT_EQ(texts()[2], QStringLiteral("Days: 1234"));
}

TEST_F(StatisticsTest, totalsThatADoubleCannotHoldAreExact) {
    // 2^53 + 1 + 2 = 9007199254740995
    load({{"2025-03-02", "9007199254740993"}, {"2025-03-01", "2"}});
    EXPECT_EQ(texts()[3], QStringLiteral("Steps: 9,007,199,254,740,995"));
    EXPECT_EQ(cell(0, "steps"), QStringLiteral("9,007,199,254,740,995"));
}

TEST_F(StatisticsTest, anInfiniteStrideWithoutStepsShowsNaNWithoutASign) {
    defaults.setDouble(SettingsKeys::strideFootLength, std::numeric_limits<double>::infinity());
    load({{"2025-03-02", "0"}});
    EXPECT_EQ(texts()[4], QStringLiteral("Miles: NaN @ inf ft/step"));
    EXPECT_EQ(texts()[5], QStringLiteral("Average: 0 steps/day, NaN miles/day"));
    EXPECT_EQ(cell(0, "avgMiles"), QStringLiteral("NaN"));
}

TEST_F(StatisticsTest, aRightToLeftDateOrNumberIsIsolatedInItsLabel) {
    const ScopedLocale arabic("ar_EG.UTF-8");
    load({{"2025-03-02", "4000"}});
    const QChar isolate = u'\u2068';
    EXPECT_TRUE(texts()[0].startsWith(QStringLiteral("From: ") + isolate));
    EXPECT_TRUE(texts()[0].endsWith(u'\u2069'));
    EXPECT_TRUE(texts()[3].startsWith(QStringLiteral("Steps: ") + isolate));
    EXPECT_TRUE(texts()[4].startsWith(QStringLiteral("Miles: ") + isolate));
    EXPECT_TRUE(texts()[4].endsWith(QStringLiteral("\u2069 @ 2.50 ft/step")));
    EXPECT_EQ(texts()[5].count(isolate), 2);
}

TEST_F(StatisticsTest, aLeftToRightDateOrNumberIsNotIsolated) {
    const ScopedLocale german("de_DE.UTF-8");
    load({{"2025-03-02", "4000"}});
    EXPECT_FALSE(texts().join(QString()).contains(u'\u2068'));
}

TEST_F(StatisticsTest, theStartOfADayIsThatOfTheLocalTimeZone) {
    const ScopedTimeZone zone("America/New_York");
    using namespace std::chrono_literals;
    const std::chrono::sys_days day = 2025y / 1 / 15;
    EXPECT_EQ(MainWindowController::startOfDay(day + 3h), day - std::chrono::days(1) + 5h);
    EXPECT_EQ(MainWindowController::startOfDay(day + 5h), day + 5h);
}

// On 2018-11-04, the clocks of Sao Paulo went from 00:00 to 01:00, at 03:00 UTC.
TEST_F(StatisticsTest, theStartOfADayWithoutMidnightIsItsFirstInstant) {
    const ScopedTimeZone zone("America/Sao_Paulo");
    using namespace std::chrono_literals;
    const std::chrono::sys_days day = 2018y / 11 / 4;
    for (const auto time : {3h, 12h, 25h}) {
        EXPECT_EQ(MainWindowController::startOfDay(day + time), day + 3h);
    }
}

TEST_F(StatisticsTest, theStartOfADayDropsTheTimeOfDay) {
    using namespace std::chrono_literals;
    const std::chrono::sys_days day = 2025y / 3 / 2;
    EXPECT_EQ(MainWindowController::startOfDay(day + 17h + 5s), day);
}

}  // namespace

}  // namespace ambulet
