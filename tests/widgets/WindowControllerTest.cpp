#include "widgets/WindowController.h"

#include <QEvent>
#include <QTest>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

struct TestController : WindowController {
    int loads = 0;
    int didLoads = 0;

    std::unique_ptr<QWidget> loadWindow() override {
        ++loads;
        return std::make_unique<QWidget>();
    }
    void windowDidLoad() override {
        ++didLoads;
        EXPECT_TRUE(isWindowLoaded());
    }
};

class EventCounter final : public QObject {
  public:
    explicit EventCounter(QEvent::Type type) : _type(type) {}

    int count() const { return _count; }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        _count += event->type() == _type ? 1 : 0;
        return false;
    }

  private:
    const QEvent::Type _type;
    int _count = 0;
};

TEST(WindowController, theWindowIsLoadedOnceWhenItIsFirstShown) {
    TestController controller;
    EXPECT_FALSE(controller.isWindowLoaded());
    controller.showWindow();
    controller.showWindow();
    EXPECT_EQ(controller.loads, 1);
    EXPECT_EQ(controller.didLoads, 1);
    EXPECT_TRUE(controller.window()->isVisible());
}

TEST(WindowController, aClosedWindowIsHiddenAndCanBeShownAgain) {
    TestController controller;
    controller.showWindow();
    controller.window()->close();
    EXPECT_FALSE(controller.window()->isVisible());
    controller.showWindow();
    EXPECT_TRUE(controller.window()->isVisible());
    EXPECT_EQ(controller.loads, 1);
}

TEST(WindowController, ctrlWClosesTheWindowButAHeldCtrlWDoesNot) {
    TestController controller;
    controller.showWindow();
    QWidget* const window = controller.window();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    QTest::simulateEvent(window, true, Qt::Key_W, Qt::ControlModifier, QString(), true);
    EXPECT_TRUE(window->isVisible());
    QTest::keyClick(window, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
}

TEST(WindowController, showingRestoresAMinimisedWindow) {
    TestController controller;
    controller.showWindow();
    controller.window()->showMinimized();
    controller.showWindow();
    EXPECT_FALSE(controller.window()->isMinimized());
}

// Not every window manager raises a window that is activated.
TEST(WindowController, showingAnOpenWindowRaisesIt) {
    TestController controller;
    controller.showWindow();
    EventCounter raised(QEvent::ZOrderChange);
    controller.window()->installEventFilter(&raised);
    controller.showWindow();
    EXPECT_EQ(raised.count(), 1);
}

TEST(WindowController, showingAMinimisedWindowKeepsItMaximised) {
    TestController controller;
    controller.showWindow();
    controller.window()->showMaximized();
    controller.window()->showMinimized();
    controller.showWindow();
    EXPECT_FALSE(controller.window()->isMinimized());
    EXPECT_TRUE(controller.window()->isMaximized());
}

}  // namespace

}  // namespace ambulet
