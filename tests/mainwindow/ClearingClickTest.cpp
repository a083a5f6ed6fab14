// A click outside the table and outside all controls clears the selection. The tests send mouse
// presses to the window, as the windowing system does.

#include "mainwindow/ControllerTest.h"

#include <QApplication>
#include <QHeaderView>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QWindow>

namespace ambulet {

namespace {

class ClearingClickTest : public ControllerTest {
  protected:
    ClearingClickTest() {
        load({{"2025-03-02", "1"}, {"2025-03-01", "2"}, {"2025-02-01", "3"}});
        QCoreApplication::processEvents();
        table().selectRowIndexes({1, 2});
    }

    TableView& table() const { return *controller->tableView(); }
    bool cleared() const { return table().selectedRowIndexes().empty(); }

    void press(const QWidget* view, QPoint point, Qt::MouseButton button = Qt::LeftButton) const {
        QWindow* const window = controller->window()->windowHandle();
        const QPoint position = view->mapTo(controller->window(), point);
        QTest::mousePress(window, button, {}, position);
        QTest::mouseRelease(window, button, {}, position);
    }
    void press(const QWidget* view) const { press(view, view->rect().center()); }
};

TEST_F(ClearingClickTest, aClickOnTheEmptyPanelClearsTheSelection) {
    press(controller->controlsPanel(), QPoint(3, 3));
    EXPECT_TRUE(cleared());
    EXPECT_EQ(controller->daysLabel()->text(), QStringLiteral("Days: 3"));
    EXPECT_FALSE(controller->fromLabel()->font().bold());
}

TEST_F(ClearingClickTest, thePressClearsTheSelectionBeforeTheRelease) {
    QWindow* const window = controller->window()->windowHandle();
    const QPoint point = controller->controlsPanel()->mapTo(controller->window(), QPoint(3, 3));
    QTest::mousePress(window, Qt::LeftButton, {}, point);
    EXPECT_TRUE(cleared());
    table().selectRowIndexes({1});
    QTest::mouseRelease(window, Qt::LeftButton, {}, point);
    EXPECT_FALSE(cleared());
}

TEST_F(ClearingClickTest, aClickClearsTheSelectionAlsoWhileTheStrideEditorIsOpen) {
    controller->strideDidClick();
    press(controller->controlsPanel(), QPoint(3, 3));
    EXPECT_TRUE(cleared());
    EXPECT_TRUE(controller->strideEditor()->isVisible());
}

TEST_F(ClearingClickTest, aClickClearsTheSelectionAlsoIfTheScrollViewIsUnknown) {
    controller->setScrollView(nullptr);
    press(controller->controlsPanel(), QPoint(3, 3));
    EXPECT_TRUE(cleared());
}

TEST_F(ClearingClickTest, theViewUnderAClearingClickGetsTheClick) {
    class Presses : public QObject {
      public:
        int count = 0;

      protected:
        bool eventFilter(QObject* watched, QEvent* event) override {
            count += event->type() == QEvent::MouseButtonPress ? 1 : 0;
            return QObject::eventFilter(watched, event);
        }
    } presses;
    controller->controlsPanel()->installEventFilter(&presses);
    press(controller->controlsPanel(), QPoint(3, 3));
    EXPECT_TRUE(cleared());
    EXPECT_EQ(presses.count, 1);
}

TEST_F(ClearingClickTest, theSecondPressOfADoubleClickClearsTheSelectionToo) {
    const QPointF point = controller->controlsPanel()->mapTo(controller->window(), QPointF(3, 3));
    QMouseEvent press(QEvent::MouseButtonDblClick, point, controller->window()->mapToGlobal(point),
                      Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(controller->window()->windowHandle(), &press);
    EXPECT_TRUE(cleared());
}

TEST_F(ClearingClickTest, aClickOnTheSeparatorClearsTheSelection) {
    press(controller->separatorBox());
    EXPECT_TRUE(cleared());
}

TEST_F(ClearingClickTest, aClickOnTheWindowsBackgroundClearsTheSelection) {
    press(controller->window(), QPoint(2, controller->window()->height() - 2));
    EXPECT_TRUE(cleared());
}

TEST_F(ClearingClickTest, aClickOnTheProgressIndicatorClearsTheSelection) {
    controller->progressIndicator()->show();
    QCoreApplication::processEvents();
    press(controller->progressIndicator());
    EXPECT_TRUE(cleared());
}

TEST_F(ClearingClickTest, aClickOnALabelKeepsTheSelection) {
    for (const QLabel* label : std::initializer_list<QLabel*>{
             controller->fromLabel(), controller->toLabel(), controller->daysLabel(),
             controller->totalLabel(), controller->averageLabel(), controller->statusLabel()}) {
        press(label);
        EXPECT_FALSE(cleared()) << qPrintable(label->text());
    }
    press(controller->milesLabel());
    EXPECT_FALSE(cleared());
    EXPECT_TRUE(controller->strideEditor()->isVisible());
    press(controller->strideEditor());
    EXPECT_FALSE(cleared());
}

TEST_F(ClearingClickTest, aClickOnThePathFieldKeepsTheSelection) {
    press(controller->filePathField());
    EXPECT_FALSE(cleared());
}

TEST_F(ClearingClickTest, aClickOnTheButtonKeepsTheSelection) {
    const auto* button = controller->window()->findChild<QPushButton*>();
    QWindow* const window = controller->window()->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, {},
                      button->mapTo(controller->window(), button->rect().center()));
    EXPECT_FALSE(cleared());
}

TEST_F(ClearingClickTest, aClickInTheTableIsHandledByTheTable) {
    press(table().viewport(), table().visualRect(table().model()->index(0, 0)).center());
    EXPECT_EQ(table().selectedRowIndexes(), std::vector<int>({1, 2}));
    press(table().viewport(), table().visualRect(table().model()->index(4, 0)).center());
    EXPECT_EQ(table().selectedRowIndexes(), std::vector<int>({4}));
}

TEST_F(ClearingClickTest, aClickOnTheTablesHeaderKeepsTheSelection) {
    press(table().horizontalHeader(), QPoint(30, 5));
    EXPECT_FALSE(cleared());
}

TEST_F(ClearingClickTest, aClickOnAScrollBarKeepsTheSelection) {
    controller->window()->resize(560, 300);
    table().verticalScrollBar()->setRange(0, 100);
    table().setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    QCoreApplication::processEvents();
    press(table().verticalScrollBar());
    EXPECT_FALSE(cleared());
}

TEST_F(ClearingClickTest, aClickOnTheMenuBarKeepsTheSelection) {
    auto& window = *qobject_cast<QMainWindow*>(controller->window());
    window.menuBar()->addMenu(QStringLiteral("Menu"));
    QCoreApplication::processEvents();
    ASSERT_GT(window.menuBar()->height(), 5);
    press(window.menuBar(), QPoint(window.width() - 10, 5));
    EXPECT_FALSE(cleared());
}

TEST_F(ClearingClickTest, aClickWithAnotherMouseButtonKeepsTheSelection) {
    press(controller->controlsPanel(), QPoint(3, 3), Qt::RightButton);
    press(controller->controlsPanel(), QPoint(3, 3), Qt::MiddleButton);
    EXPECT_FALSE(cleared());
}

TEST_F(ClearingClickTest, aClickInAnotherWindowKeepsTheSelection) {
    QWidget other;
    other.resize(200, 200);
    other.show();
    QTest::mouseClick(other.windowHandle(), Qt::LeftButton, {}, QPoint(10, 10));
    EXPECT_FALSE(cleared());
}

TEST_F(ClearingClickTest, aClickWhileAMenuIsOpenKeepsTheSelection) {
    QMenu menu;
    menu.addAction(QStringLiteral("Item"));
    menu.popup(controller->window()->mapToGlobal(QPoint(300, 300)));
    ASSERT_EQ(QApplication::activePopupWidget(), &menu);
    QTest::mousePress(controller->window()->windowHandle(), Qt::LeftButton, {}, QPoint(3, 3));
    EXPECT_FALSE(cleared());
}

TEST_F(ClearingClickTest, theClickedViewStillGetsTheClick) {
    press(controller->filePathField());
    EXPECT_TRUE(controller->filePathField()->hasFocus());
}

}  // namespace

}  // namespace ambulet
