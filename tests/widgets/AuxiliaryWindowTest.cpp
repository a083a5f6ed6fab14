#include "widgets/AuxiliaryWindow.h"

#include "support/ScopedFontSize.h"
#include "widgets/AutoresizingLayout.h"

#include <QAccessible>
#include <QApplication>
#include <QMenuBar>
#include <QScreen>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

namespace ambulet {

namespace {

using Sizing = AuxiliaryWindow::Sizing;

QRect available() {
    return QGuiApplication::primaryScreen()->availableGeometry();
}

// Expects half of the free width left of the window, and a quarter of the free height above it.
void expectCentered(const QWidget& window) {
    const QRect frame = window.frameGeometry();
    const int left = frame.left() - available().left();
    const int above = frame.top() - available().top();
    EXPECT_EQ(left, (available().width() - frame.width()) / 2);
    EXPECT_EQ(above, (available().height() - frame.height()) / 4);
}

TEST(AuxiliaryWindow, theWindowOpensCentredInTheAvailableArea) {
    AuxiliaryWindow window(QSize(360, 260), Sizing::Fixed);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(window.size(), QSize(360, 260));
    expectCentered(window);
}

TEST(AuxiliaryWindow, aMovedWindowCanBeCentredAgain) {
    AuxiliaryWindow window(QSize(360, 260), Sizing::Fixed);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.move(3, 5);
    EXPECT_EQ(window.frameGeometry().topLeft(), QPoint(3, 5));
    window.center();
    expectCentered(window);
}

TEST(AuxiliaryWindow, aWindowIsCentredEachTimeItIsShown) {
    AuxiliaryWindow window(QSize(360, 260), Sizing::Resizable);
    window.show();
    window.move(3, 5);
    window.close();
    EXPECT_FALSE(window.isVisible());
    window.show();
    expectCentered(window);
}

TEST(AuxiliaryWindow, aResizableWindowTooLargeForTheScreenIsMadeSmaller) {
    AuxiliaryWindow window(QSize(available().width() + 50, 300), Sizing::Resizable);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.center();
    EXPECT_EQ(window.frameGeometry().width(), available().width());
    EXPECT_EQ(window.height(), 300);
    EXPECT_EQ(window.frameGeometry().left(), available().left());
}

TEST(AuxiliaryWindow, aFixedWindowTooLargeForTheScreenHasItsTitleBarOnTheScreen) {
    AuxiliaryWindow window(QSize(300, available().height() + 50), Sizing::Fixed);
    window.show();
    EXPECT_EQ(window.height(), available().height() + 50);
    EXPECT_EQ(window.frameGeometry().top(), available().top());
}

TEST(AuxiliaryWindow, aFixedWindowTooWideForTheScreenHasItsLeftEdgeOnTheScreen) {
    AuxiliaryWindow window(QSize(available().width() + 50, 300), Sizing::Fixed);
    window.show();
    EXPECT_EQ(window.width(), available().width() + 50);
    EXPECT_EQ(window.frameGeometry().left(), available().left());
}

TEST(AuxiliaryWindow, centringLeavesAMaximisedOrFullScreenWindowAlone) {
    for (const auto state : {Qt::WindowMaximized, Qt::WindowFullScreen}) {
        AuxiliaryWindow window(QSize(300, 200), Sizing::Resizable);
        window.setWindowState(state);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        const QRect before = window.geometry();
        window.center();
        EXPECT_EQ(window.geometry(), before);
        EXPECT_EQ(window.windowState(), state);
    }
}

// Adds the window's frame or removes it. The offscreen platform applies the flag only when the
// window's state is set.
void setFrame(QWindow& handle, bool frame) {
    handle.setFlag(Qt::FramelessWindowHint, !frame);
    handle.setWindowState(Qt::WindowFullScreen);
    handle.setWindowState(Qt::WindowNoState);
    ASSERT_EQ(handle.frameMargins().isNull(), !frame);
}

void expose(QWindow& handle) {
    QExposeEvent exposed(QRect({}, handle.size()));
    QCoreApplication::sendEvent(&handle, &exposed);
}

TEST(AuxiliaryWindow, aWindowWhoseFrameComesLateIsCentredAgain) {
    AuxiliaryWindow window(QSize(360, 260), Sizing::Resizable);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    setFrame(*window.windowHandle(), false);
    window.center();
    const QRect without = window.geometry();
    // The state stays the same, so that the window gets no event.
    window.windowHandle()->setFlag(Qt::FramelessWindowHint, false);
    window.windowHandle()->setWindowState(Qt::WindowNoState);
    window.setGeometry(without);
    ASSERT_FALSE(window.windowHandle()->frameMargins().isNull());
    expose(*window.windowHandle());
    expectCentered(window);
    EXPECT_NE(window.geometry(), without);
}

TEST(AuxiliaryWindow, aWindowThatTheUserHasMovedStaysThereIfItsFrameChanges) {
    AuxiliaryWindow window(QSize(360, 260), Sizing::Resizable);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    setFrame(*window.windowHandle(), false);
    window.move(3, 5);
    expose(*window.windowHandle());
    EXPECT_EQ(window.pos(), QPoint(3, 5));
}

TEST(AuxiliaryWindow, aWindowThatTheWindowManagerShowsAgainIsNotCentred) {
    AuxiliaryWindow window(QSize(360, 260), Sizing::Resizable);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.move(3, 5);
    QShowEvent shown;
    QSpontaneKeyEvent::setSpontaneous(&shown);
    qApp->notify(&window, &shown);
    EXPECT_EQ(window.pos(), QPoint(3, 5));
}

TEST(AuxiliaryWindow, theMinimumSizeIncludesTheFrame) {
    AuxiliaryWindow window(QSize(700, 600), Sizing::Resizable);
    window.setMinimumFrameSize(QSize(400, 300));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const QMargins frame = window.windowHandle()->frameMargins();
    EXPECT_GT(frame.top(), 0) << "the test needs a window frame";
    window.resize(1, 1);
    EXPECT_EQ(window.frameGeometry().size(), QSize(400, 300));
}

TEST(AuxiliaryWindow, aFixedWindowCannotBeResizedMaximisedOrMinimised) {
    AuxiliaryWindow window(QSize(360, 260), Sizing::Fixed);
    window.show();
    window.resize(500, 500);
    EXPECT_EQ(window.size(), QSize(360, 260));
    EXPECT_FALSE(window.windowFlags() & Qt::WindowMinMaxButtonsHint);
    EXPECT_TRUE(window.windowFlags() & Qt::WindowCloseButtonHint);
}

TEST(AuxiliaryWindow, aResizableWindowCanBeMaximisedButNotMinimised) {
    AuxiliaryWindow window(QSize(360, 260), Sizing::Resizable);
    window.show();
    EXPECT_TRUE(window.windowFlags() & Qt::WindowMaximizeButtonHint);
    EXPECT_FALSE(window.windowFlags() & Qt::WindowMinimizeButtonHint);
    EXPECT_TRUE(window.windowFlags() & Qt::WindowCloseButtonHint);
}

TEST(AuxiliaryWindow, escapeClosesTheWindowButAHeldEscapeDoesNot) {
    AuxiliaryWindow window(QSize(360, 260), Sizing::Fixed);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::simulateEvent(&window, true, Qt::Key_Escape, Qt::NoModifier, QString(), true);
    EXPECT_TRUE(window.isVisible());
    QTest::keyClick(&window, Qt::Key_A);
    EXPECT_TRUE(window.isVisible());
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST(AuxiliaryWindow, aMenuBarIsAboveTheContentWhichKeepsItsSize) {
    for (const Sizing sizing : {Sizing::Fixed, Sizing::Resizable}) {
        AuxiliaryWindow window(QSize(360, 260), sizing);
        auto view = std::make_unique<QWidget>();
        const QWidget* const added = view.get();
        window.content().add(std::move(view), QRect(0, 0, 360, 260));
        auto* const bar = new QMenuBar;
        bar->addMenu(QStringLiteral("Menu"));
        window.addMenuBar(bar);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        const int height = bar->height();
        EXPECT_GT(height, 0);
        EXPECT_EQ(bar->geometry(), QRect(0, 0, 360, height));
        EXPECT_EQ(window.size(), QSize(360, 260 + height));
        EXPECT_EQ(added->geometry(), QRect(0, height, 360, 260));
        expectCentered(window);
    }
}

TEST(AuxiliaryWindow, usualFontSizesDoNotChangeTheSize) {
    for (const int pixels : {8, 12, 16}) {
        const ScopedFontSize font(pixels);
        for (const Sizing sizing : {Sizing::Fixed, Sizing::Resizable}) {
            AuxiliaryWindow window(QSize(360, 260), sizing);
            window.show();
            EXPECT_EQ(window.size(), QSize(360, 260)) << pixels;
        }
    }
}

TEST(AuxiliaryWindow, aLargeFontEnlargesTheContentAndTheMinimumSize) {
    const ScopedFontSize font(26);  // twice the 13 pixels that the layout is designed for
    AuxiliaryWindow fixed(QSize(180, 130), Sizing::Fixed);
    fixed.show();
    EXPECT_EQ(fixed.size(), QSize(360, 260));
    AuxiliaryWindow resizable(QSize(180, 130), Sizing::Resizable);
    resizable.setMinimumFrameSize(QSize(100, 90));
    resizable.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&resizable));
    EXPECT_EQ(resizable.size(), QSize(360, 260));
    resizable.resize(1, 1);
    EXPECT_EQ(resizable.frameGeometry().size(), QSize(200, 180));
}

TEST(AuxiliaryWindow, theMinimumSizeIsNeverLargerThanTheScreen) {
    const ScopedFontSize font(52);
    AuxiliaryWindow window(QSize(180, 130), Sizing::Resizable);
    window.setMinimumFrameSize(QSize(available().width() / 2, 90));
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.resize(1, 1);
    EXPECT_EQ(window.frameGeometry().width(), available().width());
}

TEST(AuxiliaryWindow, theSizeFollowsAFontThatChangesWhileTheWindowIsOpen) {
    AuxiliaryWindow fixed(QSize(180, 130), Sizing::Fixed);
    AuxiliaryWindow resizable(QSize(180, 130), Sizing::Resizable);
    fixed.show();
    resizable.show();
    resizable.resize(200, 140);
    {
        const ScopedFontSize font(26);
        EXPECT_TRUE(QTest::qWaitFor([&fixed] { return fixed.size() == QSize(360, 260); }));
        EXPECT_EQ(resizable.size(), QSize(200 + 180, 140 + 130));
    }
    EXPECT_TRUE(QTest::qWaitFor([&fixed] { return fixed.size() == QSize(180, 130); }));
    EXPECT_EQ(resizable.size(), QSize(200, 140));
}

TEST(AuxiliaryWindow, assistiveProgramsSeeAWindow) {
    AuxiliaryWindow window(QSize(360, 260), Sizing::Fixed);
    window.setWindowTitle(QStringLiteral("Title"));
    const QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&window);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::Window);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Title"));
}

}  // namespace

}  // namespace ambulet
