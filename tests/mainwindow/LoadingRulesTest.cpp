// What a load changes and what it keeps, also if a file is chosen or the stride is edited during
// the load.

#include "mainwindow/DialogTest.h"
#include "platform/FileBookmark.h"
#include "support/Faults.h"

#include <QPushButton>
#include <QThread>

#include <algorithm>
#include <memory>

namespace ambulet {

namespace {

/// As an event filter of the application, refuses threads until a window is first painted.
class NoThreadsBeforePainting : public QObject {
  public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            _refused.reset();
        }
        return false;
    }

  private:
    std::unique_ptr<NoThreads> _refused = std::make_unique<NoThreads>();
};

class LoadingRulesTest : public DialogTest {
  protected:
    QStringList statistics() const {
        QStringList texts;
        for (const QLabel* label : statisticsLabels()) {
            texts.append(label->text());
        }
        return texts;
    }

    const QString twoDays =
        writeExport("two.xml", {{"2025-03-02", "4000"}, {"2025-03-01", "5000"}});
    const QString oneDay = writeExport("one.xml", {{"2025-02-02", "7"}});
};

TEST_F(LoadingRulesTest, aCompletedLoadShowsTheFiguresOfAllDaysEvenIfRowsAreSelected) {
    load(twoDays);
    click(1);
    ASSERT_EQ(controller->daysLabel()->text(), QStringLiteral("Days: 1"));
    controller->loadData();
    waitForLoad();
    EXPECT_EQ(controller->daysLabel()->text(), QStringLiteral("Days: 2"));
    EXPECT_EQ(controller->totalLabel()->text(), QStringLiteral("Steps: 9,000"));
    EXPECT_EQ(controller->tableView()->selectedRowIndexes(), std::vector<int>({1}));
    EXPECT_TRUE(controller->fromLabel()->font().bold());
}

TEST_F(LoadingRulesTest, choosingAFileClearsTheSelectionAndTheBoldFontAtOnce) {
    load(twoDays);
    click(1);
    ASSERT_TRUE(controller->fromLabel()->font().bold());
    choose(oneDay);
    EXPECT_EQ(status(), QStringLiteral("Parsing XML…"));
    EXPECT_FALSE(controller->fromLabel()->font().bold());
    EXPECT_FALSE(controller->toLabel()->font().bold());
    EXPECT_TRUE(controller->tableView()->selectedRowIndexes().empty());
    waitForLoad();
    EXPECT_EQ(controller->daysLabel()->text(), QStringLiteral("Days: 1"));
}

TEST_F(LoadingRulesTest, theWindowLoadsTheFileOnceHoweverOftenItIsShown) {
    const auto timesOpened = [this](const OpenLog& log) {
        const std::vector<std::string> paths = log.paths();
        return std::count(paths.begin(), paths.end(), twoDays.toStdString());
    };
    makeController(twoDays);
    std::ptrdiff_t first = 0;
    {
        const OpenLog log;
        controller->showWindow();
        waitForLoad();
        first = timesOpened(log);
    }
    const OpenLog log;
    controller->loadData();
    waitForLoad();
    EXPECT_GT(first, 0);
    EXPECT_EQ(timesOpened(log), first);
    controller->showWindow();
    EXPECT_EQ(status(), QStringLiteral("Loaded 2 days of data."));
}

TEST_F(LoadingRulesTest, theThreadOfTheLoadIsStartedAfterTheFirstPainting) {
    NoThreadsBeforePainting filter;
    qApp->installEventFilter(&filter);
    makeController(twoDays).showWindow();
    EXPECT_EQ(status(), QStringLiteral("Parsing XML…"));
    waitForLoad();  // if no thread could be started, the status is an error
}

TEST_F(LoadingRulesTest, theButtonOpensTheFileDialog) {
    makeController().showWindow();
    bool seen = false;
    QTimer close;
    QObject::connect(&close, &QTimer::timeout, [&seen] {
        if (auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            seen = true;
            dialog->reject();
        }
    });
    close.start(0);
    controller->window()->findChild<QPushButton*>()->click();
    EXPECT_TRUE(seen);
}

TEST_F(LoadingRulesTest, choosingTheSameFileAgainLoadsItAgain) {
    load(twoDays);
    ASSERT_EQ(controller->allSteps().size(), 2U);
    writeExport("two.xml", {{"2025-03-02", "1"}, {"2025-03-01", "1"}, {"2025-02-01", "1"}});
    choose(twoDays);
    waitForLoad();
    EXPECT_EQ(controller->allSteps().size(), 3U);
}

TEST_F(LoadingRulesTest, aCancelledDialogChangesNothing) {
    load(twoDays);
    click(1);
    const QStringList before = statistics();
    choose({});
    EXPECT_EQ(controller->filePath(), twoDays);
    EXPECT_EQ(defaults.persistent(SettingsKeys::xmlFilePath), twoDays);
    EXPECT_EQ(controller->filePathField()->text(), twoDays);
    EXPECT_EQ(controller->displayRows().size(), 3U);
    EXPECT_EQ(controller->tableView()->model()->rowCount(), 3);
    EXPECT_EQ(controller->tableView()->selectedRowIndexes(), std::vector<int>({1}));
    EXPECT_EQ(statistics(), before);
    EXPECT_EQ(status(), QStringLiteral("Loaded 2 days of data."));
}

TEST_F(LoadingRulesTest, aLoadThatEndsDoesNotCloseTheStrideEditor) {
    load(twoDays);
    controller->strideDidClick();
    controller->strideEditor()->setText(QStringLiteral("9"));
    controller->loadData();
    waitForLoad();
    EXPECT_TRUE(controller->strideEditor()->isVisible());
    EXPECT_EQ(controller->strideEditor()->text(), QStringLiteral("9"));
    EXPECT_EQ(defaults.persistent(SettingsKeys::strideFootLength), std::nullopt);
}

TEST_F(LoadingRulesTest, aStrideCommittedDuringALoadIsUsedWhenTheLoadEnds) {
    load(twoDays);
    choose(oneDay);
    ASSERT_EQ(status(), QStringLiteral("Parsing XML…"));
    controller->strideDidClick();
    controller->strideEditor()->setText(QStringLiteral("5280"));
    controller->commitStrideEdit();
    EXPECT_EQ(controller->milesLabel()->text(), QStringLiteral("Miles: —"));
    waitForLoad();
    EXPECT_EQ(controller->milesLabel()->text(), QStringLiteral("Miles: 7.00 @ 5280.00 ft/step"));
    EXPECT_EQ(cell(0, "avgMiles"), QStringLiteral("7.00"));
}

TEST_F(LoadingRulesTest, aLoadIsCompletedEvenIfTheWindowIsClosed) {
    load(twoDays);
    controller->loadData();
    controller->window()->close();
    waitForLoad();
    EXPECT_EQ(controller->allSteps().size(), 2U);
    EXPECT_FALSE(controller->window()->isVisible());
}

// Notes whether a label is painted while it is narrower than its text.
class CutPaintings : public QObject {
  public:
    explicit CutPaintings(QLabel* label) : _label(label) { label->installEventFilter(this); }

    int paintings() const { return _paintings; }
    int cut() const { return _cut; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            ++_paintings;
            _cut += _label->width() < _label->sizeHint().width() ? 1 : 0;
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    QLabel* _label;
    int _paintings = 0;
    int _cut = 0;
};

// The load ends while the window waits to be painted. Qt would lay it out after that painting.
TEST_F(LoadingRulesTest, theFirstPaintingAfterALoadCutsNoText) {
    load({{"2025-03-02", "400000000000"}});
    controller->updateStatsForSteps({});
    QCoreApplication::processEvents();
    controller->window()->resize(controller->window()->minimumSizeHint());
    QCoreApplication::processEvents();
    const int narrow = controller->averageLabel()->width();
    const auto threads = [] {
        return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs).size();
    };
    const auto before = threads();
    controller->loadData();
    while (threads() > before) {
        QThread::yieldCurrentThread();
    }
    controller->window()->update();
    const CutPaintings average(controller->averageLabel());
    waitForLoad();
    QCoreApplication::processEvents();
    EXPECT_GT(controller->averageLabel()->sizeHint().width(), narrow);
    EXPECT_GT(average.paintings(), 0);
    EXPECT_EQ(average.cut(), 0);
}

TEST_F(LoadingRulesTest, theNumberOfDaysIsShownWithoutThousandsSeparators) {
    std::string text = "<HealthData>\n";
    using namespace std::chrono_literals;
    std::chrono::sys_days day = 2020y / 1 / 1;
    for (int i = 0; i < 1234; ++i, day += std::chrono::days(1)) {
        const std::chrono::year_month_day date = day;
        text += stepRecord(QStringLiteral("%1-%2-%3 12:00:00 +0000")
                               .arg(static_cast<int>(date.year()))
                               .arg(static_cast<unsigned>(date.month()), 2, 10, QLatin1Char('0'))
                               .arg(static_cast<unsigned>(date.day()), 2, 10, QLatin1Char('0'))
                               .toStdString(),
                           "1") +
                '\n';
    }
    load(writeFile("many.xml", QByteArray::fromStdString(text + "</HealthData>\n")));
    EXPECT_EQ(status(), QStringLiteral("Loaded 1234 days of data."));
    EXPECT_EQ(controller->daysLabel()->text(), QStringLiteral("Days: 1234"));
}

TEST_F(LoadingRulesTest, aBookmarkIsReplacedOnlyIfItIsStale) {
    const RememberedFile remembered{FileBookmark::make({twoDays}), twoDays};
    EXPECT_EQ(MainWindowController::resolvedFileURL(remembered).freshBookmark, std::nullopt);
    const QString moved = path("moved.xml");
    ASSERT_TRUE(QFile::rename(twoDays, moved));
    EXPECT_EQ(MainWindowController::resolvedFileURL(remembered).freshBookmark,
              FileBookmark::make({moved}));
}

}  // namespace

}  // namespace ambulet
