#include "widgets/FirstPaint.h"

#include <QTest>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

#include <memory>

namespace ambulet {

namespace {

class Painted final : public QWidget {
  public:
    int paints = 0;

  protected:
    void paintEvent(QPaintEvent* /*event*/) override { ++paints; }
};

TEST(FirstPaint, isFollowedByTheCallFromTheEventLoop) {
    Painted window;
    int paintsBefore = -1;
    afterFirstPaint(window, [&] { paintsBefore = window.paints; });
    window.show();
    EXPECT_EQ(paintsBefore, -1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return paintsBefore != -1; }));
    EXPECT_GE(paintsBefore, 1);
}

TEST(FirstPaint, isFollowedByOneCallOnly) {
    Painted window;
    int calls = 0;
    bool repainted = false;
    afterFirstPaint(window, [&] {
        ++calls;
        window.repaint();
        QTimer::singleShot(200, [&] { repainted = true; });  // longer than the call would wait
    });
    window.show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return repainted; }));
    EXPECT_EQ(calls, 1);
}

TEST(FirstPaint, isFollowedByNoSecondCallWhereItComesTooLate) {
    Painted window;
    int calls = 0;
    afterFirstPaint(window, [&] {
        ++calls;
        window.show();
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.paints > 0; }));
    bool later = false;
    QTimer::singleShot(200, [&] { later = true; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return later; }));
    EXPECT_EQ(calls, 1);
}

TEST(FirstPaint, isNotWaitedForWithoutEnd) {
    Painted window;
    bool called = false;
    afterFirstPaint(window, [&] { called = true; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return called; }));
    EXPECT_EQ(window.paints, 0);
}

TEST(FirstPaint, ofAWindowThatIsGoneCallsNothing) {
    auto window = std::make_unique<Painted>();
    bool called = false;
    afterFirstPaint(*window, [&] { called = true; });
    window.reset();
    bool later = false;
    QTimer::singleShot(200, [&] { later = true; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return later; }));
    EXPECT_FALSE(called);
}

}  // namespace

}  // namespace ambulet
