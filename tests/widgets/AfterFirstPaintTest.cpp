#include "widgets/AfterFirstPaint.h"

#include <QCoreApplication>
#include <QPaintEvent>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include <memory>

namespace ambulet {

namespace {

class Window : public QWidget {
  public:
    int paintings = 0;

  protected:
    void paintEvent(QPaintEvent* /*event*/) override { ++paintings; }
};

/// As an event filter, keeps all windows from being painted.
class WithoutExposeEvents : public QObject {
  public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        return event->type() == QEvent::Expose || event->type() == QEvent::UpdateRequest;
    }
};

class AfterFirstPaint : public testing::Test {
  protected:
    void call() {
        afterFirstPaint(*_receiver, [this] {
            ++_calls;
            _paintingsBefore = _window.paintings;
        });
    }

    bool waitForCall() {
        return QTest::qWaitFor([this] { return _calls > 0; });
    }

    Window _window;
    std::unique_ptr<QObject> _receiver = std::make_unique<QObject>();
    int _calls = 0;
    int _paintingsBefore = 0;
};

TEST_F(AfterFirstPaint, aWindowThatIsShownNextIsPaintedBeforeTheCall) {
    call();
    _window.show();
    ASSERT_EQ(_calls, 0);
    ASSERT_TRUE(waitForCall());
    EXPECT_EQ(_paintingsBefore, 1);
}

TEST_F(AfterFirstPaint, theCallComesFromTheEventLoopIfAWindowHasBeenPainted) {
    _window.show();
    ASSERT_TRUE(QTest::qWaitFor([this] { return _window.paintings == 1; }));
    call();
    ASSERT_EQ(_calls, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(_calls, 1);
}

TEST_F(AfterFirstPaint, theCallComesFromTheEventLoopIfNoWindowIsVisible) {
    call();
    ASSERT_EQ(_calls, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(_calls, 1);
}

TEST_F(AfterFirstPaint, theCallComesEvenIfTheVisibleWindowIsNeverPainted) {
    WithoutExposeEvents unexposed;
    call();
    qApp->installEventFilter(&unexposed);
    _window.show();
    ASSERT_TRUE(waitForCall());
    EXPECT_EQ(_paintingsBefore, 0);
}

TEST_F(AfterFirstPaint, theActionIsCalledOnceIfTwoWindowsArePainted) {
    Window other;
    call();
    _window.show();
    other.show();
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return _window.paintings > 0 && other.paintings > 0 && _calls > 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(_calls, 1);
}

TEST_F(AfterFirstPaint, thereIsNoCallOnceTheReceiverIsDestroyed) {
    call();
    _receiver.reset();
    _window.show();
    ASSERT_TRUE(QTest::qWaitFor([this] { return _window.paintings > 0; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(_calls, 0);
}

}  // namespace

}  // namespace ambulet
