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

// Areas beside a task bar at the left and a menu bar at the top, and on a second screen at the left
// of and above the first.
constexpr QRect besideBars(70, 30, 1000, 600);           // ends at 1070, 630
constexpr QRect negative(-1280, -200, 1280, 1024);       // ends at 0, 824
constexpr QRect belowSecondScreen(-1280, 824, 1280, 1);  // too low for any title bar

TEST(ScreenAreas, aTitleBarIsReachableIfAPartOfFiftyPointsIsInAnArea) {
    const QList<QRect> both = {belowSecondScreen, besideBars, negative};
    const struct {
        QRect titleBar;
        bool reachable;
    } cases[] = {
        {{70, 30, 300, 20}, true},      {{70, 29, 300, 20}, false},     // under the menu bar
        {{70, 610, 300, 20}, true},                                     // 610 + 20 = 630
        {{70, 611, 300, 20}, false},                                    // one line below the area
        {{1020, 100, 300, 20}, true},   {{1021, 100, 300, 20}, false},  // 49 points
        {{-180, 700, 300, 20}, true},  // 180 points on the second screen
        {{-50, 700, 300, 20}, true},    {{-49, 700, 300, 20}, false},
        {{-30, 100, 140, 20}, false},  // 30 points on one screen, 40 on the other
        {{-1280, -200, 300, 20}, true}, {{-1280, -201, 300, 20}, false},
        {{-1530, 0, 300, 20}, true},                               // -1530 + 300 = -1280 + 50
        {{-1531, 0, 300, 20}, false},   {{-20, 0, 20, 20}, true},  // a narrow window
        {{-19, 0, 20, 20}, false},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(isReachable(one.titleBar, both), one.reachable)
            << one.titleBar.x() << ' ' << one.titleBar.y();
    }
    EXPECT_FALSE(isReachable({70, 30, 300, 20}, {}));
}

TEST(ScreenAreas, aFrameIsMovedIntoTheAreaByTheShortestWay) {
    const struct {
        QRect frame;
        QRect area;
        QPoint place;
    } cases[] = {
        {{100, 100, 300, 200}, besideBars, {100, 100}},
        {{0, 0, 300, 200}, besideBars, {70, 30}},
        {{5000, 4000, 300, 200}, besideBars, {770, 430}},  // 1070 - 300, 630 - 200
        {{5000, 4000, 1100, 700}, besideBars, {70, 30}},   // too large
        {{-40, 300, 1100, 200}, besideBars, {70, 300}},    // too wide
        {{-1000, -100, 300, 200}, negative, {-1000, -100}},
        {{0, 0, 300, 200}, negative, {-300, 0}},
        {{-5000, -4000, 300, 200}, negative, {-1280, -200}},
        {{5000, 4000, 300, 200}, negative, {-300, 624}},  // 824 - 200
    };
    for (const auto& one : cases) {
        EXPECT_EQ(placeInArea(one.frame, one.area), one.place)
            << one.frame.x() << ' ' << one.frame.y() << " in " << one.area.x();
    }
}

TEST(ScreenAreas, aCentredFrameHasAQuarterOfTheFreeHeightAboveIt) {
    EXPECT_EQ(centeredPlace({400, 200}, besideBars), QPoint(370, 130));  // 70 + 600/2, 30 + 400/4
    EXPECT_EQ(centeredPlace({400, 224}, negative), QPoint(-840, 0));  // -1280 + 880/2, -200 + 200
    EXPECT_EQ(centeredPlace({1100, 200}, besideBars), QPoint(70, 130));
    EXPECT_EQ(centeredPlace({400, 700}, besideBars), QPoint(370, 30));
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
