#include "widgets/ScreenFit.h"

#include <QScreen>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include <algorithm>

namespace ambulet {

namespace {

class ScreenFitTest : public testing::Test {
  protected:
    void show(const QRect& content) {
        window.setGeometry(content);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        EXPECT_GT(frameMargins(window).top(), 0) << "the test needs a window frame";
    }

    QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget window;
};

TEST_F(ScreenFitTest, aWindowThatFitsIsNotMoved) {
    show({100, 120, 300, 200});
    fitOnScreen(window);
    EXPECT_EQ(window.geometry(), QRect(100, 120, 300, 200));
}

TEST_F(ScreenFitTest, aWindowIsNotMovedIfTheUserCanReachItsTitleBar) {
    show({100, 120, 300, 200});
    const QSize frame = window.frameGeometry().size();
    const int bar = std::max(frameMargins(window).top(), 10);
    const int right = screen.left() + screen.width();
    const int bottom = screen.top() + screen.height();
    struct {
        QPoint place;  // of the frame
        bool stays;
    } const cases[] = {
        {{right - 50, bottom - bar}, true},
        {{right - 49, 100}, false},
        {{100, bottom - bar + 1}, false},
        {{screen.left() - frame.width() + 50, 100}, true},
        {{screen.left() - frame.width() + 49, 100}, false},
        {{100, screen.top()}, true},
        {{100, screen.top() - 1}, false},
        {{100, screen.top() - 3000}, false},
        {{-100000, 100000}, false},
    };
    for (const auto& one : cases) {
        moveFrame(window, one.place);
        fitOnScreen(window);
        EXPECT_EQ(window.frameGeometry().topLeft() == one.place, one.stays)
            << one.place.x() << " " << one.place.y();
        EXPECT_TRUE(one.stays || screen.contains(window.frameGeometry()));
        EXPECT_EQ(window.size(), QSize(300, 200));
    }
}

TEST_F(ScreenFitTest, aNarrowWindowIsNotMovedIfItsWholeTitleBarCanBeReached) {
    window.setMinimumSize(1, 1);
    const QRect partlyBelow(100, screen.bottom() - 80, 20, 200);
    show(partlyBelow);
    ASSERT_LT(window.frameGeometry().width(), 50);
    fitOnScreen(window);
    EXPECT_EQ(window.geometry(), partlyBelow);
    const QPoint outside(screen.right() - 10, 120);
    moveFrame(window, outside);
    fitOnScreen(window);
    EXPECT_TRUE(screen.contains(window.frameGeometry()));
}

TEST_F(ScreenFitTest, aWindowThatIsTooLargeIsMadeToFitIncludingItsFrame) {
    show({100, 120, screen.width() + 1, screen.height() + 1});
    fitOnScreen(window);
    EXPECT_EQ(window.frameGeometry(), screen);
}

TEST_F(ScreenFitTest, aWindowThatIsOnlyTooTallKeepsItsWidth) {
    show({100, 120, 300, screen.height()});
    fitOnScreen(window);
    EXPECT_EQ(window.frameGeometry().height(), screen.height());
    EXPECT_EQ(window.frameGeometry().top(), screen.top());
    EXPECT_EQ(window.geometry().left(), 100);
    EXPECT_EQ(window.width(), 300);
}

TEST_F(ScreenFitTest, aTooTallWindowBeyondTheRightEdgeIsMovedHorizontallyToo) {
    show({screen.right() - 10, 120, 300, screen.height()});
    fitOnScreen(window);
    EXPECT_EQ(window.frameGeometry().bottomRight(), screen.bottomRight());
    EXPECT_EQ(window.width(), 300);
}

TEST_F(ScreenFitTest, aWindowWhoseMinimumIsTooLargeHasItsTitleBarOnTheScreen) {
    window.setMinimumHeight(screen.height() + 50);
    show({100, 120, 300, screen.height() + 50});
    fitOnScreen(window);
    EXPECT_EQ(window.frameGeometry().top(), screen.top());
    EXPECT_EQ(window.height(), screen.height() + 50);
}

TEST_F(ScreenFitTest, moveFramePlacesTheFramesUpperLeftCorner) {
    window.resize(300, 200);
    window.winId();
    ASSERT_FALSE(frameMargins(window).isNull());
    moveFrame(window, {50, 60});
    EXPECT_EQ(window.geometry().topLeft(),
              QPoint(50 + frameMargins(window).left(), 60 + frameMargins(window).top()));
}

}  // namespace

}  // namespace ambulet
