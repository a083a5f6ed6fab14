#include "widgets/TableView.h"

#include "widgets/Contrast.h"
#include "widgets/RowDelegate.h"
#include "widgets/TestRows.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

using Rows = std::vector<int>;

const std::vector<TableColumn> columns = {
    {QStringLiteral("a"), QStringLiteral("First"), 170, 80, Qt::AlignLeading},
    {QStringLiteral("b"), QStringLiteral("Second"), 110, 60, Qt::AlignRight},
    {QStringLiteral("c"), QStringLiteral("Third"), 160, 80, Qt::AlignRight},
};

class TableViewTest : public testing::Test {
  protected:
    TableViewTest() {
        table.setFrameShape(QFrame::NoFrame);
        table.setColumns(columns);
        table.setDataSource(&rows);
        table.resize(600, 400);
        table.show();
    }

    void click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QRect cell = table.visualRect(table.model()->index(row, 0));
        QTest::mouseClick(table.viewport(), Qt::LeftButton, modifiers, cell.center());
    }

    TestRows rows{"GddddGdd"};
    TableView table;
};

TEST_F(TableViewTest, aClickSelectsOneRow) {
    click(2);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({2}));
    click(7);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({7}));
    EXPECT_EQ(rows.notifications, 2);
}

TEST_F(TableViewTest, aControlClickAddsARowOrRemovesIt) {
    click(2);
    click(6, Qt::ControlModifier);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({2, 6}));
    click(2, Qt::ControlModifier);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({6}));
}

TEST_F(TableViewTest, aShiftClickSelectsTheRangeWithoutItsGroupRows) {
    click(3);
    click(6, Qt::ShiftModifier);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({3, 4, 6}));
}

TEST_F(TableViewTest, aClickOnAGroupRowDoesNotChangeTheSelection) {
    click(2);
    for (const auto modifiers : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier}) {
        click(5, modifiers);
        EXPECT_EQ(table.selectedRowIndexes(), Rows({2}));
    }
    EXPECT_EQ(rows.notifications, 1);
}

TEST_F(TableViewTest, onlyTheLeftButtonChangesTheSelection) {
    click(2);
    click(3, Qt::ShiftModifier);
    const QPoint below = table.visualRect(table.model()->index(7, 0)).bottomLeft() + QPoint(5, 20);
    for (const auto button : {Qt::RightButton, Qt::MiddleButton}) {
        for (const auto modifiers : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier}) {
            for (const int row : {2, 3, 6}) {
                const QPoint place = table.visualRect(table.model()->index(row, 0)).center();
                QTest::mouseClick(table.viewport(), button, modifiers, place);
                QTest::mouseDClick(table.viewport(), button, modifiers, place);
            }
            QTest::mouseClick(table.viewport(), button, modifiers, below);
            EXPECT_EQ(table.selectedRowIndexes(), Rows({2, 3}));
        }
    }
    EXPECT_EQ(rows.notifications, 2);
    click(4, Qt::ShiftModifier);  // the range still starts at the row clicked with the left button
    EXPECT_EQ(table.selectedRowIndexes(), Rows({2, 3, 4}));
}

TEST_F(TableViewTest, aPressOnAGroupRowDoesNotMoveTheStartOfTheNextRange) {
    click(2);
    click(5);
    click(6, Qt::ShiftModifier);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({2, 3, 4, 6}));
}

TEST_F(TableViewTest, aDragFromAGroupRowDoesNotChangeTheSelection) {
    const auto middle = [&](int row) {
        return table.visualRect(table.model()->index(row, 0)).center();
    };
    click(7);  // QTableView would select from here
    QTest::mousePress(table.viewport(), Qt::LeftButton, {}, middle(0));
    QMouseEvent move(QEvent::MouseMove, middle(3), table.viewport()->mapToGlobal(middle(3)),
                     Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(table.viewport(), &move);
    QTest::mouseRelease(table.viewport(), Qt::LeftButton, {}, middle(3));
    EXPECT_EQ(table.selectedRowIndexes(), Rows({7}));
}

TEST_F(TableViewTest, withoutACurrentRowAKeyGoesToTheFirstSelectableRow) {
    table.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
    for (const auto key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown}) {
        table.setDataSource(&rows);  // forgets the current row
        table.deselectAll();
        table.clearFocus();
        table.setFocus(Qt::TabFocusReason);
        QTest::keyClick(&table, key);
        EXPECT_EQ(table.selectedRowIndexes(), Rows({1}));
    }
}

TEST_F(TableViewTest, arrowKeysAndRangesContinueFromTheSameRowAfterAReload) {
    click(2);
    table.reloadData();
    QTest::keyClick(&table, Qt::Key_Down);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({3}));
    table.reloadData();
    QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({3, 4}));
    click(2);
    table.reloadData();
    click(4, Qt::ShiftModifier);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({2, 3, 4}));
}

TEST_F(TableViewTest, arrowKeysSkipGroupRows) {
    click(4);
    QTest::keyClick(&table, Qt::Key_Down);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({6}));
    QTest::keyClick(&table, Qt::Key_Up);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({4}));
}

TEST_F(TableViewTest, selectAllSelectsAllRowsButTheGroupRows) {
    table.setFocus();
    QTest::keySequence(&table, QKeySequence::SelectAll);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({1, 2, 3, 4, 6, 7}));
}

TEST_F(TableViewTest, aKeySelectsOneRowAfterSelectAll) {
    for (const auto& [key, row] : {std::pair(Qt::Key_Up, 1),
                                   {Qt::Key_Down, 2},
                                   {Qt::Key_Home, 1},
                                   {Qt::Key_End, 7},
                                   {Qt::Key_PageUp, 1}}) {
        click(1);
        QTest::keySequence(&table, QKeySequence::SelectAll);
        QTest::keyClick(&table, key);
        EXPECT_EQ(table.selectedRowIndexes(), Rows({row}));
    }
    click(7);
    QTest::keySequence(&table, QKeySequence::SelectAll);
    QTest::keyClick(&table, Qt::Key_Down);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({7}));
}

TEST_F(TableViewTest, selectRowIndexesCanSelectGroupRows) {
    table.selectRowIndexes({5, 0, 5, 99, -1});
    EXPECT_EQ(table.selectedRowIndexes(), Rows({0, 5}));
    EXPECT_EQ(rows.notifications, 1);
}

TEST_F(TableViewTest, selectingTheSameRowsAgainDoesNotNotify) {
    table.selectRowIndexes({1, 2});
    table.selectRowIndexes({2, 1});
    EXPECT_EQ(rows.notifications, 1);
}

TEST_F(TableViewTest, deselectAllNotifiesOnlyIfRowsWereSelected) {
    table.deselectAll();
    EXPECT_EQ(rows.notifications, 0);
    click(1);
    table.deselectAll();
    EXPECT_EQ(table.selectedRowIndexes(), Rows());
    EXPECT_EQ(rows.notifications, 2);
}

TEST_F(TableViewTest, aReloadKeepsTheSelectedRowsAndDoesNotNotify) {
    table.selectRowIndexes({0, 2, 7});
    rows.notifications = 0;
    table.reloadData();
    EXPECT_EQ(table.selectedRowIndexes(), Rows({0, 2, 7}));
    EXPECT_TRUE(table.selectionModel()->isRowSelected(2, {}));
    EXPECT_TRUE(table.selectionModel()->isRowSelected(7, {}));
    EXPECT_EQ(rows.notifications, 0);
}

TEST_F(TableViewTest, aReloadWithFewerRowsKeepsTheSelectedRowsThatStillExist) {
    table.selectRowIndexes({2, 7});
    rows.kinds = "Gdd";
    table.reloadData();
    EXPECT_EQ(table.selectedRowIndexes(), Rows({2}));
    rows.kinds.clear();
    table.reloadData();
    EXPECT_EQ(table.selectedRowIndexes(), Rows());
    EXPECT_EQ(rows.notifications, 1);
}

TEST_F(TableViewTest, aReloadKeepsTheScrollPosition) {
    rows.kinds = std::string(500, 'd');
    table.reloadData();
    QCoreApplication::processEvents();
    table.verticalScrollBar()->setValue(1234);
    table.reloadData();
    QCoreApplication::processEvents();
    EXPECT_EQ(table.verticalScrollBar()->value(), 1234);
}

TEST_F(TableViewTest, aClickBelowTheLastRowClearsTheSelection) {
    click(2);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.viewport()->rect().bottomLeft());
    EXPECT_EQ(table.selectedRowIndexes(), Rows());
}

TEST_F(TableViewTest, newColumnsReplaceTheOldOnes) {
    table.setColumns(columns);
    table.setColumns(columns);
    ASSERT_EQ(table.model()->columnCount(), 3);
    EXPECT_EQ(table.columnWidth(0), 170);
    EXPECT_EQ(table.columnWidth(1), 110);
}

TEST_F(TableViewTest, theLastColumnGrowsWithTheTable) {
    EXPECT_EQ(table.columnWidth(2), table.viewport()->width() - 170 - 110);
    table.resize(900, 400);
    EXPECT_EQ(table.columnWidth(0), 170);
    EXPECT_EQ(table.columnWidth(1), 110);
    EXPECT_EQ(table.columnWidth(2), table.viewport()->width() - 170 - 110);
}

TEST_F(TableViewTest, aTableTooNarrowForTheLastColumnsMinimumScrollsHorizontally) {
    table.resize(300, 400);
    EXPECT_EQ(table.columnWidth(2), 80);
    EXPECT_GT(table.horizontalScrollBar()->maximum(), 0);
}

// Counts the paints of a table, the paints without a vertical scroll bar, and how often the
// horizontal scroll bar appears.
class ScrollBarWatch final : public QObject {
  public:
    explicit ScrollBarWatch(TableView& table) : _table(table) {
        table.viewport()->installEventFilter(this);
        table.horizontalScrollBar()->installEventFilter(this);
    }

    int paints = 0;
    int paintsWithoutVertical = 0;
    int horizontalShown = 0;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == _table.viewport() && event->type() == QEvent::Paint) {
            ++paints;
            paintsWithoutVertical += _table.verticalScrollBar()->isVisible() ? 0 : 1;
        } else if (watched == _table.horizontalScrollBar() && event->type() == QEvent::Show) {
            ++horizontalShown;
        }
        return false;
    }

  private:
    TableView& _table;
};

TEST_F(TableViewTest, aReloadShowsTheVerticalScrollBarAtOnceAndNeverAHorizontalOne) {
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&table));
    QCoreApplication::processEvents();
    ASSERT_FALSE(table.verticalScrollBar()->isVisible());
    ScrollBarWatch watch(table);
    rows.kinds = std::string(500, 'd');
    table.reloadData();
    table.viewport()->repaint();  // as if the window were exposed at this moment
    EXPECT_EQ(watch.paints, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(watch.paintsWithoutVertical, 0);
    EXPECT_EQ(watch.horizontalShown, 0);
    EXPECT_EQ(table.columnWidth(2), table.viewport()->width() - 170 - 110);
}

TEST_F(TableViewTest, eachColumnHasAMinimumWidthOfItsOwn) {
    for (int column = 0; column < 3; ++column) {
        table.setColumnWidth(column, 20);
    }
    EXPECT_EQ(table.columnWidth(0), 80);
    EXPECT_EQ(table.columnWidth(1), 60);
    EXPECT_EQ(table.columnWidth(2), table.viewport()->width() - 80 - 60);
}

TEST_F(TableViewTest, aLargerFontMakesTallerRows) {
    const int before = table.rowHeight(1);
    QFont font = table.font();
    font.setPointSizeF(font.pointSizeF() * 2);
    table.setFont(font);
    EXPECT_GE(table.rowHeight(1), table.fontMetrics().height());
    EXPECT_GT(table.rowHeight(1), before);
}

TEST_F(TableViewTest, aColumnIsWidenedForLongTextsAndNeverNarrowerThanItsInitialWidth) {
    EXPECT_EQ(table.columnWidth(0), 170);
    QFont huge = table.font();
    huge.setPixelSize(200);
    table.setFont(huge);
    const int needed = QFontMetrics(huge).horizontalAdvance(QStringLiteral("First"));
    EXPECT_GE(table.columnWidth(0), needed);
    QFont small = table.font();
    small.setPixelSize(8);
    table.setFont(small);
    EXPECT_EQ(table.columnWidth(0), 170);
}

TEST_F(TableViewTest, aColumnThatTheUserHasResizedKeepsItsWidth) {
    table.setColumnWidth(0, 90);
    QFont huge = table.font();
    huge.setPixelSize(200);
    table.setFont(huge);
    table.reloadData();
    EXPECT_EQ(table.columnWidth(0), 90);
}

TEST_F(TableViewTest, shiftAndArrowKeysExtendPastGroupRowsWithoutSelectingThem) {
    click(4);
    QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({4, 6}));
    QTest::keyClick(&table, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({4, 6, 7}));
    QTest::keyClick(&table, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(table.selectedRowIndexes(), Rows({4, 6}));
}

TEST_F(TableViewTest, homeAndEndGoToTheFirstAndTheLastSelectableRow) {
    for (const auto& [modifiers, home, end] :
         {std::tuple(Qt::NoModifier, Rows({1}), Rows({7})),
          {Qt::ShiftModifier, Rows({1, 2}), Rows({2, 3, 4, 6, 7})}}) {
        click(2);
        QTest::keyClick(&table, Qt::Key_Home, modifiers);
        EXPECT_EQ(table.selectedRowIndexes(), home);
        click(2);
        QTest::keyClick(&table, Qt::Key_End, modifiers);
        EXPECT_EQ(table.selectedRowIndexes(), end);
    }
}

TEST_F(TableViewTest, pageKeysMoveByAboutAPageAndNeverSelectGroupRows) {
    rows.kinds.clear();
    for (int month = 0; month < 100; ++month) {
        rows.kinds += "Gddd";
    }
    table.reloadData();
    QCoreApplication::processEvents();
    click(1);
    const int page = table.viewport()->height() / table.rowHeight(0);
    int last = 1;
    for (int press = 0; press < 20; ++press) {
        QTest::keyClick(&table, Qt::Key_PageDown);
        ASSERT_EQ(table.selectedRowIndexes().size(), 1U);
        const int row = table.selectedRowIndexes().front();
        EXPECT_FALSE(rows.isGroupRow(row));
        EXPECT_GT(row, last);
        EXPECT_LE(row, last + page + 2);
        last = row;
    }
    for (int press = 0; press < 20; ++press) {
        QTest::keyClick(&table, Qt::Key_PageUp);
        ASSERT_EQ(table.selectedRowIndexes().size(), 1U);
        EXPECT_FALSE(rows.isGroupRow(table.selectedRowIndexes().front()));
    }
    EXPECT_EQ(table.selectedRowIndexes(), Rows({1}));
}

TEST_F(TableViewTest, aDragSelectsTheRowsThatItPassesButNoGroupRows) {
    const auto middle = [&](int row) {
        return table.visualRect(table.model()->index(row, 0)).center();
    };
    QTest::mousePress(table.viewport(), Qt::LeftButton, {}, middle(3));
    QTest::mouseMove(table.viewport(), middle(4));
    QMouseEvent move(QEvent::MouseMove, middle(6), table.viewport()->mapToGlobal(middle(6)),
                     Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(table.viewport(), &move);
    QTest::mouseRelease(table.viewport(), Qt::LeftButton, {}, middle(6));
    EXPECT_EQ(table.selectedRowIndexes(), Rows({3, 4, 6}));
}

TEST_F(TableViewTest, escapeClearsTheSelection) {
    click(2);
    QTest::keyClick(&table, Qt::Key_Escape);
    EXPECT_EQ(table.selectedRowIndexes(), Rows());
}

TEST_F(TableViewTest, aKeyThatLeadsToTheSameRowSelectsItAgainAfterEscape) {
    for (const int key : {Qt::Key_Home, Qt::Key_Up, Qt::Key_PageUp}) {
        click(1);
        QTest::keyClick(&table, Qt::Key_Escape);
        QTest::keyClick(&table, static_cast<Qt::Key>(key));
        EXPECT_EQ(table.selectedRowIndexes(), Rows({1}));
    }
}

TEST_F(TableViewTest, copyPutsTheHeadersAndTheSelectedRowsOnTheClipboardAsShown) {
    table.setColumns(
        {columns[0], {QStringLiteral("empty"), QStringLiteral("Second"), 100, 50, {}}, columns[2]});
    table.selectRowIndexes({1, 7});
    QTest::keySequence(&table, QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              QStringLiteral("First\tSecond\tThird\na1\t\tc1\na7\t\tc7\n"));
}

TEST_F(TableViewTest, copyTakesAllRowsIfNoneIsSelected) {
    rows.kinds = "Gd";
    table.reloadData();
    QTest::keySequence(&table, QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              QStringLiteral("First\tSecond\tThird\na0\tb0\tc0\na1\tb1\tc1\n"));
}

TEST_F(TableViewTest, theFocusIsVisibleIfItCameByKeyboard) {
    table.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
    table.setFocus(Qt::MouseFocusReason);
    const QImage without = table.viewport()->grab().toImage();
    const auto focusBy = [this](Qt::FocusReason reason) {
        table.clearFocus();
        table.setFocus(reason);
        EXPECT_TRUE(table.hasFocus());
        return table.viewport()->grab().toImage();
    };
    const QImage with = focusBy(Qt::TabFocusReason);
    EXPECT_NE(with, without);
    EXPECT_EQ(focusBy(Qt::ActiveWindowFocusReason), with);
    EXPECT_EQ(focusBy(Qt::MouseFocusReason), without);
    EXPECT_EQ(focusBy(Qt::ActiveWindowFocusReason), without);
    EXPECT_EQ(focusBy(Qt::BacktabFocusReason), with);
    EXPECT_EQ(focusBy(Qt::OtherFocusReason), without);
    EXPECT_EQ(focusBy(Qt::ShortcutFocusReason), with);
}

TEST_F(TableViewTest, rowsHaveNoHeaders) {
    EXPECT_FALSE(table.verticalHeader()->isVisible());
}

TEST_F(TableViewTest, aModifierHeldForAClickDoesNotMakeTheFocusVisible) {
    table.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
    table.setFocus(Qt::MouseFocusReason);
    const QImage without = table.viewport()->grab().toImage();
    for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_Meta}) {
        QTest::keyPress(&table, key);
        EXPECT_EQ(table.viewport()->grab().toImage(), without) << key;
        QTest::keyRelease(&table, key);
    }
    QTest::keyClick(&table, Qt::Key_Down);
    const QImage with = table.viewport()->grab().toImage();
    QTest::keyPress(&table, Qt::Key_Shift);
    EXPECT_EQ(table.viewport()->grab().toImage(), with);
    QTest::keyRelease(&table, Qt::Key_Shift);
}

TEST_F(TableViewTest, groupRowsHaveABackgroundMixedFromThePalettesColours) {
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    table.setPalette(dark);
    const QImage picture = table.viewport()->grab().toImage();
    const auto ground = [&](int row) {
        return picture.pixelColor(table.visualRect(table.model()->index(row, 2)).topLeft() +
                                  QPoint(3, 3));
    };
    EXPECT_EQ(ground(1), QColor(Qt::black));
    EXPECT_EQ(ground(0), QColor(20, 20, 20));  // 8 % of white in black: 20.4
}

TEST_F(TableViewTest, aSelectedGroupRowIsDrawnAsSelected) {
    table.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
    const auto ground = [&](int row) {
        return table.viewport()->grab().toImage().pixelColor(
            table.visualRect(table.model()->index(row, 2)).topLeft() + QPoint(3, 3));
    };
    table.selectRowIndexes({2});
    const QColor selected = ground(2);
    ASSERT_NE(ground(5), selected);
    table.selectRowIndexes({5});
    EXPECT_EQ(ground(5), selected);
    EXPECT_NE(ground(2), selected);
}

TEST_F(TableViewTest, theFocusIsAContrastingOutlineAndNotFilled) {
    table.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
    for (const bool current : {false, true}) {
        QRect marked = table.viewport()->rect();
        if (current) {
            click(2);
            marked = QRect(0, table.rowViewportPosition(2), marked.width(), table.rowHeight(2));
        }
        table.setFocus(Qt::MouseFocusReason);
        const QImage without = table.viewport()->grab().toImage();
        table.clearFocus();
        table.setFocus(Qt::TabFocusReason);
        const QImage with = table.viewport()->grab().toImage();
        for (int y = 0; y < with.height(); ++y) {
            for (int x = 0; x < with.width(); ++x) {
                const bool edge =
                    marked.contains(x, y) && !marked.adjusted(1, 1, -1, -1).contains(x, y);
                if (edge) {
                    ASSERT_GE(contrastRatio(with.pixelColor(x, y), without.pixelColor(x, y)), 3)
                        << x << ' ' << y;
                } else {
                    ASSERT_EQ(with.pixel(x, y), without.pixel(x, y)) << x << ' ' << y;
                }
            }
        }
    }
}

TEST_F(TableViewTest, aRightToLeftTextIsDrawnRightToLeft) {
    // The text looks the same as inside a right-to-left embedding (U+202B), and different from the
    // same text inside a left-to-right embedding (U+202A). DejaVu Sans has the Hebrew letters.
    const QString date = QStringLiteral("2 \u05d1\u05de\u05e8\u05e5 2025");
    const auto cell = [&](const QString& text) {
        rows.textOfRow[1] = text;
        return table.viewport()->grab(table.visualRect(table.model()->index(1, 0))).toImage();
    };
    EXPECT_EQ(cell(date), cell(u'\u202b' + date + u'\u202c'));
    EXPECT_NE(cell(date), cell(u'\u202a' + date + u'\u202c'));
}

TEST_F(TableViewTest, aRightToLeftTextIsAlignedLikeItsColumn) {
    const auto firstInk = [&](const QString& text, int column) {
        rows.textOfRow[1] = text;
        const QImage cell =
            table.viewport()->grab(table.visualRect(table.model()->index(1, column))).toImage();
        for (int x = 0; x < cell.width(); ++x) {
            for (int y = 0; y < cell.height(); ++y) {
                if (cell.pixel(x, y) != cell.pixel(0, 0)) {
                    return x;
                }
            }
        }
        return cell.width();
    };
    EXPECT_LT(firstInk(QStringLiteral("\u05d1\u05de"), 0), 25);
    EXPECT_GT(firstInk(QStringLiteral("\u05d1\u05de"), 1), 110 / 2);
}

TEST_F(TableViewTest, anEmptyTableShowsItsTextInTheMiddleUntilItHasRows) {
    const auto picture = [&] { return table.viewport()->grab().toImage(); };
    rows.kinds.clear();
    table.reloadData();
    const QImage blank = picture();
    rows.emptyText = QStringLiteral("Nothing here yet");
    const QImage told = picture();
    EXPECT_NE(told, blank);
    EXPECT_EQ(told.copy(0, 0, told.width(), told.height() / 3),
              blank.copy(0, 0, told.width(), told.height() / 3));
    rows.kinds = "d";
    table.reloadData();
    QCoreApplication::processEvents();
    const QImage filled = picture();
    rows.emptyText.clear();
    EXPECT_EQ(filled, picture());
}

TEST_F(TableViewTest, aLongTextOfAnEmptyTableIsWrappedAndNotCut) {
    rows.kinds.clear();
    table.reloadData();
    const QImage blank = table.viewport()->grab().toImage();
    rows.emptyText = QStringLiteral("not a word of it is cut ").repeated(10);
    ASSERT_GT(table.fontMetrics().horizontalAdvance(rows.emptyText), table.width());
    const QImage told = table.viewport()->grab().toImage();
    int inked = 0;
    for (int y = 0; y < told.height(); ++y) {
        const QRect line(0, y, told.width(), 1);
        inked += told.copy(line) != blank.copy(line) ? 1 : 0;
    }
    EXPECT_GT(inked, table.fontMetrics().height()) << "there is only one line";
}

TEST_F(TableViewTest, aTextOfSeveralWordsThatDoesNotFitEndsInAnEllipsis) {
    table.setColumnWidth(0, 100);
    const auto cell = [&](const QString& text) {
        rows.textOfRow[1] = text;
        return table.viewport()->grab(table.visualRect(table.model()->index(1, 0))).toImage();
    };
    const int margin = table.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &table);
    const int room = 100 - 2 * (RowDelegate::padding + margin + 1);
    const QString words = QStringLiteral("one two three four five six");
    const QString elided = table.fontMetrics().elidedText(words, Qt::ElideRight, room);
    ASSERT_NE(elided, words);
    EXPECT_EQ(cell(words), cell(elided));
}

TEST_F(TableViewTest, theLastColumnIsWideEnoughForItsTexts) {
    rows.kinds = "d";
    rows.textOfRow[0] = QString(60, QLatin1Char('8'));
    table.reloadData();
    const int needed = table.fontMetrics().horizontalAdvance(rows.textOfRow[0]);
    EXPECT_GE(table.columnWidth(2), needed);
    EXPECT_EQ(table.horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
}

TEST_F(TableViewTest, aLargeFontDoesNotRaiseTheColumnsMinimumWidths) {
    QFont huge = table.horizontalHeader()->font();
    huge.setPixelSize(200);
    table.horizontalHeader()->setFont(huge);
    table.setColumnWidth(1, 61);
    EXPECT_EQ(table.columnWidth(1), 61);
}

TEST_F(TableViewTest, aColumnIsWideEnoughForTheWidestNumberInAnyRow) {
    rows.kinds = std::string(2000, 'd');
    rows.textOfRow[1500] = QStringLiteral("1,111,111,111,111,111,111");
    table.reloadData();
    const QString widest = QStringLiteral("8,888,888,888,888,888,888");
    EXPECT_GE(table.columnWidth(1), table.fontMetrics().horizontalAdvance(widest));
}

TEST_F(TableViewTest, aTitleThatDoesNotFitEndsWithAnEllipsis) {
    const QString shortened = QStringLiteral("A rather l…");
    const auto picture = [&](const QString& title) {
        table.setColumns({{QStringLiteral("a"), title, 170, 20, {}}, columns[1]});
        // The title has the same margins as the texts below.
        const int margin = table.style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1 + 11;
        table.setColumnWidth(0, table.fontMetrics().horizontalAdvance(shortened) + 2 * margin);
        return table.horizontalHeader()->grab().toImage();
    };
    EXPECT_EQ(picture(QStringLiteral("A rather long title")), picture(shortened));
}

TEST_F(TableViewTest, theTooltipOfATextThatDoesNotFitHasTheWholeText) {
    const auto tooltipOf = [](QWidget* view, QPoint place) {
        QToolTip::hideText();
        QHelpEvent event(QEvent::ToolTip, place, view->mapToGlobal(place));
        QCoreApplication::sendEvent(view, &event);
        return QToolTip::text();
    };
    rows.textOfRow[1] = QStringLiteral("a text that needs some more space than eighty points");
    const auto ofCell = [&](int row) {
        return tooltipOf(table.viewport(), table.visualRect(table.model()->index(row, 0)).center());
    };
    const auto ofTitle = [&] { return tooltipOf(table.horizontalHeader()->viewport(), {40, 5}); };
    table.reloadData();
    EXPECT_EQ(ofCell(1), QString());
    EXPECT_EQ(ofTitle(), QString());
    table.setColumns(
        {{QStringLiteral("a"), QStringLiteral("A rather long title"), 170, 20, {}}, columns[1]});
    table.setColumnWidth(0, 60);
    EXPECT_EQ(ofCell(2), QString());
    EXPECT_EQ(ofCell(1), rows.textOfRow[1]);
    EXPECT_EQ(ofTitle(), QStringLiteral("A rather long title"));
}

// Records the region that an object was asked to paint.
class PaintedRegion final : public QObject {
  public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            region += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }

    QRegion region;
};

// A table that scrolls: a group row with ten rows, and another group row with a hundred.
class PinnedRowTest : public TableViewTest {
  protected:
    PinnedRowTest() {
        rows.kinds = "Gdddddddddd" + std::string("G") + std::string(100, 'd');
        table.reloadData();
        QCoreApplication::processEvents();
    }

    int height() const { return table.rowHeight(0); }
    void scrollTo(int value) { table.verticalScrollBar()->setValue(value); }
    QImage top() {
        return table.viewport()
            ->grab(QRect(0, 0, table.viewport()->width(), height() - 1))
            .toImage();
    }
};

TEST_F(PinnedRowTest, aGroupRowThatIsVisibleInItsPlaceIsNotPinned) {
    EXPECT_TRUE(table.pinnedRect().isNull());
    scrollTo(11 * height());
    EXPECT_TRUE(table.pinnedRect().isNull());
}

TEST_F(PinnedRowTest, theGroupRowStaysAtTheTopWhileItsRowsScroll) {
    const QImage own = top();
    for (const int value : {1, height() / 2, height(), 5 * height() + 3, 10 * height()}) {
        scrollTo(value);
        EXPECT_EQ(table.pinnedRect(), QRect(0, 0, table.viewport()->width(), height()));
        EXPECT_EQ(top(), own) << value;
    }
}

TEST_F(PinnedRowTest, thePinnedRowIsPaintedAgainAfterEachScroll) {
    scrollTo(5 * height());
    QCoreApplication::processEvents();
    PaintedRegion painted;
    table.viewport()->installEventFilter(&painted);
    scrollTo(5 * height() + 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(painted.region.intersected(table.pinnedRect()), QRegion(table.pinnedRect()));
}

TEST_F(PinnedRowTest, theNextGroupRowPushesThePinnedRowAway) {
    for (const int pushed : {1, height() / 2, height() - 1}) {
        scrollTo(10 * height() + pushed);
        EXPECT_EQ(table.pinnedRect(), QRect(0, -pushed, table.viewport()->width(), height()));
    }
    scrollTo(12 * height());
    EXPECT_EQ(table.pinnedRect().top(), 0);
    EXPECT_EQ(table.indexAt({5, 5}).row(), 11);
}

TEST_F(PinnedRowTest, noRowIsPinnedOverRowsBeforeTheFirstGroupRow) {
    rows.kinds = std::string(50, 'd') + "G" + std::string(50, 'd');
    table.reloadData();
    QCoreApplication::processEvents();
    scrollTo(20 * height());
    EXPECT_TRUE(table.pinnedRect().isNull());
}

TEST_F(PinnedRowTest, aClickOnThePinnedRowDoesNotChangeTheSelection) {
    click(1);
    scrollTo(5 * height());
    for (const auto modifiers : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier}) {
        QTest::mouseClick(table.viewport(), Qt::LeftButton, modifiers, {30, 5});
        EXPECT_EQ(table.selectedRowIndexes(), Rows({1}));
    }
    EXPECT_EQ(table.indexAt({30, 5}).row(), 0);
    EXPECT_EQ(table.indexAt({30, height() + 5}).row(), 6);
}

TEST_F(PinnedRowTest, theUpKeyNeverLeadsToARowCoveredByThePinnedRow) {
    scrollTo(60 * height());
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, {30, 3 * height()});
    for (int press = 0; press < 40; ++press) {
        QTest::keyClick(&table, Qt::Key_Up);
        const int row = table.selectedRowIndexes().front();
        EXPECT_GE(table.rowViewportPosition(row), table.pinnedRect().bottom() + 1) << row;
    }
}

TEST_F(PinnedRowTest, aDragEndsAtTheRowBehindThePinnedRow) {
    scrollTo(5 * height());
    const auto send = [&](QEvent::Type type, QPoint place) {
        QMouseEvent event(type, place, table.viewport()->mapToGlobal(place),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
        QCoreApplication::sendEvent(table.viewport(), &event);
    };
    send(QEvent::MouseButtonPress, {30, 3 * height() + 5});
    send(QEvent::MouseMove, {30, 2 * height() + 5});
    send(QEvent::MouseMove, {30, 5});
    send(QEvent::MouseButtonRelease, {30, 5});
    EXPECT_EQ(table.selectedRowIndexes(), Rows({5, 6, 7, 8}));
}

TEST_F(PinnedRowTest,
       aPinnedRowIsDrawnLikeAnyGroupRowInActiveAndInactiveWindowsWithAndWithoutFocus) {
    QPalette palette;
    palette.setColor(QPalette::Inactive, QPalette::Text, Qt::red);
    table.setPalette(palette);
    QWidget other;
    other.show();
    for (const bool inFront : {true, false}) {
        QWidget& window = inFront ? table : other;
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        for (const bool focus : {true, false}) {
            focus ? table.setFocus(Qt::MouseFocusReason) : table.clearFocus();
            scrollTo(0);
            const QImage own = top();
            scrollTo(5 * height());
            EXPECT_EQ(top(), own) << inFront << focus;
        }
    }
}

TEST_F(PinnedRowTest, theOutlineOfTheCurrentRowIsNotDrawnOverThePinnedRow) {
    table.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
    table.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&table, Qt::Key_Down);
    ASSERT_EQ(table.selectedRowIndexes(), Rows({1}));
    scrollTo(5 * height());
    const QImage own = top();
    // Row 1 is wholly or partly behind the pinned row.
    for (const int value : {1, height() / 2, height() - 1, height(), 3 * height() / 2}) {
        scrollTo(value);
        EXPECT_EQ(top(), own) << value;
    }
}

TEST_F(PinnedRowTest, theOutlineOfACurrentRowPartlyBehindThePinnedRowIsDrawnBelowIt) {
    table.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
    table.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&table, Qt::Key_Down);
    scrollTo(height() / 2);
    const QImage with = table.viewport()->grab().toImage();
    table.clearFocus();
    table.setFocus(Qt::MouseFocusReason);
    const QImage without = table.viewport()->grab().toImage();
    const int bottom = table.rowViewportPosition(1) + height() - 1;
    for (int y = 0; y <= bottom; ++y) {
        const bool below = y > table.pinnedRect().bottom();
        EXPECT_EQ(with.pixel(0, y) != without.pixel(0, y), below) << y;
    }
    EXPECT_NE(with.pixel(50, bottom), without.pixel(50, bottom));
}

TEST_F(PinnedRowTest, aSelectedPinnedRowIsDrawnAsSelected) {
    table.selectRowIndexes({0});
    const QImage own = top();
    scrollTo(5 * height());
    EXPECT_EQ(top(), own);
}

}  // namespace

}  // namespace ambulet
