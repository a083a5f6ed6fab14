#include "mainwindow/ControllerTest.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QFontMetricsF>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleFactory>
#include <QTimer>

#include <cmath>

namespace ambulet {

namespace {

class StrideEditorTest : public ControllerTest {
  protected:
    StrideEditorTest() {
        // 5280 steps at a stride of n feet are n miles.
        load({{"2025-03-02", "5280"}, {"2025-02-02", "10560"}});
        controller->window()->activateWindow();
        QCoreApplication::processEvents();
    }

    InPlaceField& editor() const { return *controller->strideEditor(); }
    bool open() const { return editor().isVisible(); }
    double stored() const { return defaults.doubleForKey(SettingsKeys::strideFootLength); }
    bool anyStored() const {
        return defaults.persistent(SettingsKeys::strideFootLength).has_value();
    }
    QString miles() const { return controller->milesLabel()->text(); }

    void clickLabel() const {
        QTest::mouseClick(controller->milesLabel(), Qt::LeftButton, {}, QPoint(3, 8));
    }

    void openAndType(const char* text) const {
        clickLabel();
        QTest::keyClicks(&editor(), QString::fromUtf8(text));
    }
};

TEST_F(StrideEditorTest, theEditorIsHiddenAtFirst) {
    EXPECT_FALSE(open());
}

TEST_F(StrideEditorTest, aClickOnTheMilesOpensTheEditorWithItsTextSelected) {
    clickLabel();
    EXPECT_TRUE(open());
    EXPECT_TRUE(editor().hasFocus());
    EXPECT_EQ(editor().text(), QStringLiteral("2.50"));
    EXPECT_EQ(editor().selectedText(), QStringLiteral("2.50"));
}

TEST_F(StrideEditorTest, onlyAClickWithThePrimaryButtonOpensTheEditor) {
    for (const auto button : {Qt::RightButton, Qt::MiddleButton}) {
        QTest::mouseClick(controller->milesLabel(), button, {}, QPoint(3, 8));
        EXPECT_FALSE(open());
    }
}

TEST_F(StrideEditorTest, aPressThatIsReleasedElsewhereDoesNotOpenTheEditor) {
    QTest::mousePress(controller->milesLabel(), Qt::LeftButton, {}, QPoint(3, 8));
    QTest::mouseRelease(controller->milesLabel(), Qt::LeftButton, {}, QPoint(3, 80));
    EXPECT_FALSE(open());
}

TEST_F(StrideEditorTest, theEditorOpensOverTheStrideThreePointsHigher) {
    clickLabel();
    const QLabel& label = *controller->milesLabel();
    ASSERT_EQ(label.text(), QStringLiteral("Miles: 7.50 @ 2.50 ft/step"));
    const double prefix =
        QFontMetricsF(label.font()).horizontalAdvance(QStringLiteral("Miles: 7.50 @ "));
    EXPECT_EQ(editor().parentWidget(), label.parentWidget());
    EXPECT_EQ(editor().x(), label.x() + static_cast<int>(std::ceil(prefix)));
    EXPECT_EQ(editor().y(), label.y() - 3);
    EXPECT_EQ(editor().width(), 60);
    EXPECT_EQ(editor().height(), label.height());
}

TEST_F(StrideEditorTest, theEditorFollowsTheLabelsOwnFont) {
    QFont font = controller->milesLabel()->font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    controller->milesLabel()->setFont(font);
    QCoreApplication::processEvents();
    clickLabel();
    const double prefix = QFontMetricsF(font).horizontalAdvance(QStringLiteral("Miles: 7.50 @ "));
    EXPECT_EQ(editor().x(), controller->milesLabel()->x() + static_cast<int>(std::ceil(prefix)));
}

TEST_F(StrideEditorTest, theEditorFollowsTheLabelAndKeepsTheTypedText) {
    const auto expectOverTheStride = [this](const char* prefix, const char* what) {
        QCoreApplication::processEvents();
        const QLabel& label = *controller->milesLabel();
        const double width =
            QFontMetricsF(label.font()).horizontalAdvance(QString::fromUtf8(prefix));
        EXPECT_EQ(editor().geometry(), QRect(label.x() + static_cast<int>(std::ceil(width)),
                                             label.y() - 3, editor().width(), label.height()))
            << what;
        EXPECT_EQ(editor().text(), QStringLiteral("9")) << what;
    };
    openAndType("9");
    const int before = editor().x();
    controller->window()->resize(1100, 800);
    expectOverTheStride("Miles: 7.50 @ ", "a wider window");
    EXPECT_NE(editor().x(), before);
    QFont font = controller->window()->font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    controller->window()->setFont(font);
    expectOverTheStride("Miles: 7.50 @ ", "a larger font");
    controller->tableView()->selectRowIndexes({1});
    expectOverTheStride("Miles: 2.50 @ ", "another text");
    controller->updateStatsForSteps(std::vector(40, controller->allSteps().front()));
    expectOverTheStride("Miles: 100.00 @ ", "a longer text");
    font.setBold(true);
    controller->milesLabel()->setFont(font);
    expectOverTheStride("Miles: 100.00 @ ", "a font of the label alone");
    QLabel& label = *controller->milesLabel();
    label.resize(label.width(), label.height() + 5);
    expectOverTheStride("Miles: 100.00 @ ", "a taller label");
    EXPECT_TRUE(open());
}

TEST_F(StrideEditorTest, theEditorGrowsWithItsFontSoThatFourDecimalsFit) {
    const auto expectWholeTextVisible = [this](int pixels) {
        QFont font = controller->window()->font();
        font.setPixelSize(pixels);
        controller->window()->setFont(font);
        openAndType("0.7512");
        QTest::keyClick(&editor(), Qt::Key_End);
        // If the text has scrolled, its first character is not at the field's left edge.
        EXPECT_EQ(editor().cursorPositionAt(QPoint(0, editor().height() / 2)), 0) << pixels;
        const QImage atEnd = editor().grab().toImage();
        QTest::keyClick(&editor(), Qt::Key_Home);
        const int half = atEnd.width() / 2;
        EXPECT_EQ(atEnd.copy(6, 0, half - 6, atEnd.height()),
                  editor().grab(QRect(6, 0, half - 6, atEnd.height())).toImage())
            << pixels;
        QTest::keyClick(&editor(), Qt::Key_Escape);
    };
    for (const int pixels : {9, 12, 13, 16, 27, 40}) {
        expectWholeTextVisible(pixels);
    }
}

TEST_F(StrideEditorTest, theOpenEditorChangesItsWidthWithItsFontAndItsStyle) {
    openAndType("9");
    ASSERT_EQ(editor().width(), 60);
    QFont font = editor().font();
    font.setPixelSize(27);
    editor().setFont(font);
    const int width = editor().width();
    EXPECT_GT(width, 60);
    const std::unique_ptr<QStyle> windows(QStyleFactory::create(QStringLiteral("Windows")));
    editor().setStyle(windows.get());
    const int margins = windows->pixelMetric(QStyle::PM_DefaultFrameWidth) -
                        QApplication::style()->pixelMetric(QStyle::PM_DefaultFrameWidth);
    ASSERT_NE(margins, 0);
    EXPECT_NE(editor().width(), width);
    editor().setStyle(nullptr);
}

TEST_F(StrideEditorTest, noPartOfTheStrideIsVisibleBesideTheEditor) {
    defaults.setDouble(SettingsKeys::strideFootLength, 123456789.0);  // wider than the editor
    controller->recomputeStats();
    clickLabel();
    const QRect label = controller->milesLabel()->geometry();
    const QRect beside(QPoint(editor().geometry().right() + 1, label.top()), label.bottomRight());
    const QImage picture = controller->controlsPanel()->grab(beside).toImage();
    QImage blank(picture.size(), picture.format());
    blank.fill(picture.pixel(picture.width() - 1, 0));
    EXPECT_EQ(picture, blank);
    QTest::keyClick(&editor(), Qt::Key_Escape);
    EXPECT_NE(controller->controlsPanel()->grab(beside).toImage(), blank);
}

TEST_F(StrideEditorTest, closingTheWindowStoresTheStride) {
    openAndType("3");
    controller->window()->close();
    EXPECT_EQ(stored(), 3.0);
}

TEST_F(StrideEditorTest, quittingStoresTheStride) {
    openAndType("3");
    ASSERT_TRUE(QMetaObject::invokeMethod(qApp, "aboutToQuit"));
    EXPECT_EQ(stored(), 3.0);
}

TEST_F(StrideEditorTest, openingTheEditorDoesNotRefreshRowsOrStatistics) {
    controller->daysLabel()->setText(QStringLiteral("as it was"));
    int reloads = 0;
    const QObject whileHere;
    QObject::connect(controller->tableView()->model(), &QAbstractItemModel::modelReset, &whileHere,
                     [&reloads] { ++reloads; });
    clickLabel();
    EXPECT_EQ(controller->daysLabel()->text(), QStringLiteral("as it was"));
    EXPECT_EQ(reloads, 0);
}

TEST_F(StrideEditorTest, aSecondClickMovesTheEditorOverTheStrideAgain) {
    clickLabel();
    const QRect place = editor().geometry();
    editor().move(0, 0);
    clickLabel();
    EXPECT_EQ(editor().geometry(), place);
}

TEST_F(StrideEditorTest, aStrideHasNoUpperBound) {
    openAndType("1e300");
    QTest::keyClick(&editor(), Qt::Key_Return);
    EXPECT_EQ(stored(), 1e300);
}

TEST_F(StrideEditorTest, theEditorShowsALargeStrideWithoutThousandsSeparators) {
    defaults.setDouble(SettingsKeys::strideFootLength, 12345.0);
    clickLabel();
    EXPECT_EQ(editor().text(), QStringLiteral("12345.00"));
}

TEST_F(StrideEditorTest, otherKeysEditTheText) {
    openAndType("35");
    QTest::keyClick(&editor(), Qt::Key_Left);
    QTest::keyClicks(&editor(), QStringLiteral("."));
    QTest::keyClick(&editor(), Qt::Key_Home);
    QTest::keyClicks(&editor(), QStringLiteral("1"));
    EXPECT_EQ(editor().text(), QStringLiteral("13.5"));
    EXPECT_TRUE(open());
}

TEST_F(ControllerTest, theStrideEditorOpensAndStoresBeforeAnyFileIsChosen) {
    makeController().showWindow();
    QTest::mouseClick(controller->milesLabel(), Qt::LeftButton, {}, QPoint(3, 8));
    InPlaceField& editor = *controller->strideEditor();
    ASSERT_TRUE(editor.isVisible());
    EXPECT_EQ(editor.x(), controller->milesLabel()->x());
    EXPECT_EQ(editor.text(), QStringLiteral("2.50"));
    QTest::keyClicks(&editor, QStringLiteral("3"));
    QTest::keyClick(&editor, Qt::Key_Return);
    EXPECT_EQ(defaults.doubleForKey(SettingsKeys::strideFootLength), 3.0);
    EXPECT_EQ(controller->milesLabel()->text(), QStringLiteral("Miles: —"));
}

// The windowing system sends repeated presses of a held key.
class HeldKeyTest : public StrideEditorTest {
  protected:
    void press(Qt::Key key, bool again) const {
        QKeyEvent event(QEvent::KeyPress, key, {}, {}, again);
        QApplication::sendEvent(controller->window()->windowHandle(), &event);
        QCoreApplication::processEvents();
    }
};

TEST_F(HeldKeyTest, aHeldEscapeThatClosedTheEditorDoesNotClearTheSelection) {
    click(1);
    clickLabel();
    press(Qt::Key_Escape, false);
    ASSERT_FALSE(open());
    ASSERT_TRUE(controller->tableView()->hasFocus());
    press(Qt::Key_Escape, true);
    EXPECT_EQ(controller->tableView()->selectedRowIndexes(), std::vector<int>({1}));
    press(Qt::Key_Escape, false);
    EXPECT_TRUE(controller->tableView()->selectedRowIndexes().empty());
}

TEST_F(HeldKeyTest, aHeldReturnThatOpenedOrClosedTheEditorDoesNotUndoThat) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        controller->milesLabel()->setFocus(Qt::TabFocusReason);
        press(key, false);
        ASSERT_TRUE(open());
        press(key, true);
        EXPECT_TRUE(open());
        press(key, false);
        ASSERT_FALSE(open());
        press(key, true);
        EXPECT_FALSE(open());
    }
}

TEST_F(HeldKeyTest, aHeldSpaceThatOpenedTheEditorTypesNothing) {
    controller->milesLabel()->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space, false);
    ASSERT_TRUE(open());
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, {}, QStringLiteral(" "), true);
    QApplication::sendEvent(controller->window()->windowHandle(), &held);
    EXPECT_EQ(editor().text(), QStringLiteral("2.50"));
}

TEST_F(HeldKeyTest, heldArrowKeysContinueToMoveTheSelection) {
    click(1);
    press(Qt::Key_Down, true);
    EXPECT_EQ(controller->tableView()->selectedRowIndexes(), std::vector<int>({3}));
}

TEST_F(StrideEditorTest, theEditorOpensAtTheLabelsLeftEdgeIfTheLabelShowsNoStride) {
    controller->updateStatsForSteps({});
    ASSERT_EQ(miles(), QStringLiteral("Miles: —"));
    clickLabel();
    EXPECT_EQ(editor().x(), controller->milesLabel()->x());
    QTest::keyClicks(&editor(), QStringLiteral("3"));
    QTest::keyClick(&editor(), Qt::Key_Return);
    EXPECT_EQ(stored(), 3.0);
}

TEST_F(StrideEditorTest, theEditorOpensInTheCornerOfThePanelIfThereIsNoLabel) {
    delete controller->milesLabel();
    controller->strideDidClick();
    // The editor's lower left corner is 3 points above the panel's.
    EXPECT_EQ(editor().geometry(), QRect(0, controller->controlsPanel()->height() - 3, 60, 0));
}

TEST_F(StrideEditorTest, returnStoresTheStrideAndRefreshesRowsAndStatistics) {
    openAndType("3");
    QTest::keyClick(&editor(), Qt::Key_Return);
    EXPECT_FALSE(open());
    EXPECT_EQ(stored(), 3.0);
    EXPECT_EQ(cell(0, "avgMiles"), QStringLiteral("3.00"));
    EXPECT_EQ(cell(2, "avgMiles"), QStringLiteral("6.00"));
    EXPECT_EQ(miles(), QStringLiteral("Miles: 9.00 @ 3.00 ft/step"));
    EXPECT_EQ(controller->averageLabel()->text(),
              QStringLiteral("Average: 7,920 steps/day, 4.50 miles/day"));
}

TEST_F(StrideEditorTest, enterStoresTheStrideToo) {
    openAndType("3");
    QTest::keyClick(&editor(), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(stored(), 3.0);
}

TEST_F(StrideEditorTest, aValueThatIsNotAboveZeroIsRefusedAndTheEditorCloses) {
    for (const char* text : {"0", "-1", "abc", " ", "nan", "-0.5"}) {
        controller->milesLabel()->setText(QStringLiteral("stale"));
        openAndType(text);
        QTest::keyClick(&editor(), Qt::Key_Return);
        EXPECT_FALSE(open()) << text;
        EXPECT_FALSE(anyStored()) << text;
        EXPECT_EQ(miles(), QStringLiteral("Miles: 7.50 @ 2.50 ft/step")) << text;
        clickLabel();
        EXPECT_EQ(editor().text(), QStringLiteral("2.50")) << text;
    }
}

TEST_F(StrideEditorTest, everyValueAboveZeroIsStored) {
    openAndType("2.5");
    QTest::keyClick(&editor(), Qt::Key_Return);
    EXPECT_TRUE(anyStored());  // although it is the default
    openAndType("0.0001");
    QTest::keyClick(&editor(), Qt::Key_Return);
    EXPECT_EQ(stored(), 0.0001);
}

TEST_F(StrideEditorTest, aRefusedValueStillRefreshesRowsAndStatistics) {
    double stride = 4;
    for (const char* text : {"0", "-1", "abc"}) {
        openAndType(text);
        defaults.setDouble(SettingsKeys::strideFootLength, stride);  // without the editor
        QTest::keyClick(&editor(), Qt::Key_Return);
        EXPECT_EQ(stored(), stride) << text;
        EXPECT_EQ(cell(0, "avgMiles"), QStringLiteral("%1.00").arg(stride)) << text;
        EXPECT_EQ(miles(),
                  QStringLiteral("Miles: %1.00 @ %2.00 ft/step").arg(3 * stride).arg(stride))
            << text;
        ++stride;
    }
}

TEST_F(StrideEditorTest, anEmptyTextIsRefused) {
    clickLabel();
    QTest::keyClick(&editor(), Qt::Key_Delete);
    QTest::keyClick(&editor(), Qt::Key_Return);
    EXPECT_FALSE(anyStored());
}

TEST_F(StrideEditorTest, theNumberAtTheStartOfTheTextIsStored) {
    openAndType("2.75 feet");
    QTest::keyClick(&editor(), Qt::Key_Return);
    EXPECT_EQ(stored(), 2.75);
}

TEST_F(StrideEditorTest, allDecimalsAreStoredAndUsedButTwoAreShown) {
    openAndType("2.6789");
    QTest::keyClick(&editor(), Qt::Key_Return);
    EXPECT_EQ(stored(), 2.6789);
    // (5280 + 10560) × 2.6789 ÷ 5280 = 8.0367. With 2.68 the label would also show 8.04, so the
    // row is checked, too.
    EXPECT_EQ(miles(), QStringLiteral("Miles: 8.04 @ 2.68 ft/step"));
    EXPECT_DOUBLE_EQ(std::get<MonthSummary>(controller->displayRows()[0]).avgMiles(), 2.6789);
    clickLabel();
    EXPECT_EQ(editor().text(), QStringLiteral("2.68"));
}

TEST_F(StrideEditorTest, theNumberIsStoredExactlyAsRead) {
    for (const auto& [text, number] : {std::pair("2.123456789012345", 2.123456789012345),
                                       {"123456", 123456.0},
                                       {"1e12", 1e12}}) {
        openAndType(text);
        QTest::keyClick(&editor(), Qt::Key_Return);
        EXPECT_EQ(stored(), number);
        const UserDefaults nextStart(path("settings.ini"));
        EXPECT_EQ(nextStart.doubleForKey(SettingsKeys::strideFootLength), number);
    }
}

TEST_F(StrideEditorTest, escapeDoesNotStoreTheStride) {
    openAndType("9");
    QTest::keyClick(&editor(), Qt::Key_Escape);
    EXPECT_FALSE(open());
    QCoreApplication::processEvents();
    EXPECT_FALSE(anyStored());
    EXPECT_EQ(miles(), QStringLiteral("Miles: 7.50 @ 2.50 ft/step"));
}

TEST_F(StrideEditorTest, escapeRefreshesNeitherRowsNorStatistics) {
    clickLabel();
    controller->daysLabel()->setText(QStringLiteral("as it was"));
    int reloads = 0;
    const QObject whileHere;
    QObject::connect(controller->tableView()->model(), &QAbstractItemModel::modelReset, &whileHere,
                     [&reloads] { ++reloads; });
    QTest::keyClick(&editor(), Qt::Key_Escape);
    EXPECT_EQ(controller->daysLabel()->text(), QStringLiteral("as it was"));
    EXPECT_EQ(reloads, 0);
}

TEST_F(StrideEditorTest, tabAndBacktabStoreTheStrideAndMoveTheFocus) {
    openAndType("3");
    QTest::keyClick(&editor(), Qt::Key_Tab);
    EXPECT_FALSE(open());
    EXPECT_EQ(stored(), 3.0);
    EXPECT_EQ(QApplication::focusWidget(), controller->tableView());

    openAndType("4");
    QTest::keyClick(&editor(), Qt::Key_Backtab);
    EXPECT_FALSE(open());
    EXPECT_EQ(stored(), 4.0);
    EXPECT_EQ(QApplication::focusWidget(), controller->milesLabel());
}

// As assistive programs and access keys do.
TEST_F(StrideEditorTest, movingTheFocusWithoutMouseOrTabStoresTheStride) {
    for (const auto reason : {Qt::OtherFocusReason, Qt::ShortcutFocusReason}) {
        openAndType(reason == Qt::OtherFocusReason ? "3" : "4");
        controller->tableView()->setFocus(reason);
        EXPECT_FALSE(open());
        EXPECT_EQ(stored(), reason == Qt::OtherFocusReason ? 3.0 : 4.0);
    }
}

TEST_F(StrideEditorTest, aClickOnTheTableStoresTheStride) {
    openAndType("3");
    click(1);
    EXPECT_FALSE(open());
    EXPECT_EQ(stored(), 3.0);
    EXPECT_EQ(controller->tableView()->selectedRowIndexes(), std::vector<int>({1}));
}

TEST_F(StrideEditorTest, aClickOnAnotherFieldStoresTheStride) {
    openAndType("3");
    QTest::mouseClick(controller->filePathField(), Qt::LeftButton);
    EXPECT_EQ(stored(), 3.0);
    EXPECT_TRUE(controller->filePathField()->hasFocus());
}

TEST_F(StrideEditorTest, aCommitWhileTheEditorIsClosedDoesNothing) {
    openAndType("3");
    QTest::keyClick(&editor(), Qt::Key_Return);
    editor().setText(QStringLiteral("4"));
    controller->commitStrideEdit();
    EXPECT_EQ(stored(), 3.0);
    openAndType("5");
    QTest::keyClick(&editor(), Qt::Key_Escape);
    controller->commitStrideEdit();
    EXPECT_EQ(stored(), 3.0);
}

TEST_F(StrideEditorTest, aCommitReloadsTheRowsOnceAfterTheEditorHasClosed) {
    int reloads = 0;
    const QObject whileHere;
    QObject::connect(controller->tableView()->model(), &QAbstractItemModel::modelReset, &whileHere,
                     [&] {
                         ++reloads;
                         EXPECT_FALSE(open());
                     });
    openAndType("3");
    QTest::keyClick(&editor(), Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(reloads, 1);
}

TEST_F(StrideEditorTest, aSecondClickOnTheMilesDiscardsTheTypedText) {
    openAndType("9");
    clickLabel();
    EXPECT_TRUE(open());
    EXPECT_EQ(editor().text(), QStringLiteral("2.50"));
    EXPECT_EQ(editor().selectedText(), QStringLiteral("2.50"));
    EXPECT_FALSE(anyStored());
}

TEST_F(StrideEditorTest, activatingAnotherWindowNeitherStoresNorCancels) {
    openAndType("9");
    QWidget other;
    other.show();
    other.activateWindow();
    QCoreApplication::processEvents();
    ASSERT_FALSE(editor().hasFocus());
    EXPECT_TRUE(open());
    EXPECT_FALSE(anyStored());
    other.close();
    controller->window()->activateWindow();
    QCoreApplication::processEvents();
    EXPECT_EQ(editor().text(), QStringLiteral("9"));
    EXPECT_TRUE(editor().hasFocus());
}

TEST_F(StrideEditorTest, theEditorsContextMenuNeitherStoresNorCancels) {
    openAndType("9");
    bool seen = false;
    QTimer::singleShot(0, [&seen] {
        if (QWidget* const menu = QApplication::activePopupWidget()) {
            seen = true;
            menu->close();
        }
    });
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5),
                            editor().mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&editor(), &event);
    QCoreApplication::processEvents();
    EXPECT_TRUE(seen);
    EXPECT_TRUE(open());
    EXPECT_FALSE(anyStored());
}

TEST_F(StrideEditorTest, aCommitKeepsTheSelectionAndTheScrollPosition) {
    std::string text = "<HealthData>\n";
    for (int year = 2000; year < 2025; ++year) {
        for (int month = 10; month <= 12; ++month) {
            text += stepRecord(std::to_string(year) + '-' + std::to_string(month) +
                                   "-10 12:00:00 +0000",
                               "5280") +
                    '\n';
        }
    }
    load(writeFile("long.xml", QByteArray::fromStdString(text + "</HealthData>\n")));
    QCoreApplication::processEvents();
    TableView& table = *controller->tableView();
    click(1);
    click(3, Qt::ControlModifier);  // makes 3 the current row; scrolling then hides that row
    table.verticalScrollBar()->setValue(table.verticalScrollBar()->maximum() / 2);
    const int scrolled = table.verticalScrollBar()->value();
    ASSERT_GT(scrolled, 0);
    ASSERT_LT(table.rowViewportPosition(3), 0);
    openAndType("3");
    QTest::keyClick(&editor(), Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(table.selectedRowIndexes(), std::vector<int>({1, 3}));
    EXPECT_EQ(table.verticalScrollBar()->value(), scrolled);
    EXPECT_EQ(miles(), QStringLiteral("Miles: 6.00 @ 3.00 ft/step"));
    EXPECT_TRUE(controller->fromLabel()->font().bold());
}

TEST_F(StrideEditorTest, theFileDialogNeitherStoresNorCancels) {
    openAndType("9");
    QTimer close;
    QObject::connect(&close, &QTimer::timeout, [] {
        if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            dialog->reject();
        }
    });
    close.start(0);
    controller->chooseFileAction();
    close.stop();
    QCoreApplication::processEvents();
    EXPECT_TRUE(open());
    EXPECT_EQ(editor().text(), QStringLiteral("9"));
    EXPECT_FALSE(anyStored());
}

TEST_F(StrideEditorTest, anEditorOpenedByAClickGivesTheFocusToTheTableWhenItCloses) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
        clickLabel();
        QTest::keyClick(&editor(), key);
        EXPECT_TRUE(controller->tableView()->hasFocus());
        // The table shows its focus outline, because a key has closed the editor.
        const QImage with = controller->tableView()->viewport()->grab().toImage();
        controller->tableView()->setFocus(Qt::MouseFocusReason);
        controller->tableView()->clearFocus();
        EXPECT_NE(controller->tableView()->viewport()->grab().toImage(), with);
    }
}

TEST_F(StrideEditorTest, anEditorOpenedByKeyboardGivesTheFocusBackToTheMiles) {
    for (const auto opening : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        for (const auto closing : {Qt::Key_Return, Qt::Key_Escape}) {
            controller->milesLabel()->setFocus(Qt::TabFocusReason);
            QTest::keyClick(controller->milesLabel(), opening);
            EXPECT_TRUE(open());
            QTest::keyClick(&editor(), closing);
            EXPECT_FALSE(open());
            EXPECT_TRUE(controller->milesLabel()->hasFocus());
        }
    }
}

TEST_F(StrideEditorTest, aSecondClickOnTheMilesDoesNotChangeWhoGetsTheFocusBack) {
    controller->milesLabel()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(controller->milesLabel(), Qt::Key_Space);
    clickLabel();
    QTest::keyClick(&editor(), Qt::Key_Return);
    EXPECT_FALSE(open());
    EXPECT_TRUE(controller->milesLabel()->hasFocus());
}

TEST_F(StrideEditorTest, theMilesHaveATooltipAndAHandCursor) {
    EXPECT_EQ(controller->milesLabel()->toolTip(), QStringLiteral("Click to edit stride length"));
    EXPECT_EQ(controller->milesLabel()->cursor().shape(), Qt::PointingHandCursor);
}

TEST_F(StrideEditorTest, theStoredStrideIsUsedAtTheNextStart) {
    openAndType("3.25");
    QTest::keyClick(&editor(), Qt::Key_Return);
    load(QString());
    EXPECT_EQ(miles(), QStringLiteral("Miles: 9.75 @ 3.25 ft/step"));
}

}  // namespace

}  // namespace ambulet
