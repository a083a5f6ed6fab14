#include "app/MainMenu.h"

#include "app/ShownText.h"
#include "widgets/AuxiliaryWindow.h"

#include <QApplication>
#include <QMainWindow>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

// One string for each item of a menu: "text" or "text | shortcut", or "-" for a separator.
QStringList lines(const QMenu& menu) {
    QStringList found;
    for (const QAction* const item : menu.actions()) {
        QString line = item->isSeparator() ? u"-"_s : shownText(*item);
        if (!item->shortcut().isEmpty()) {
            line += u" | "_s + item->shortcut().toString(QKeySequence::PortableText);
        }
        found.append(line);
    }
    return found;
}

class MainMenuTest : public testing::Test {
  protected:
    MainMenuTest() { main.installOn(window); }

    QMenu& menu(int index) { return *window.menuBar()->actions().at(index)->menu(); }
    QAction& item(const QString& text) { return itemShowing(text, *window.menuBar()); }

    MainMenu main{u"Daily Steps"_s};
    QMainWindow window;
};

// The texts of all items, in which "&" marks the access key. Without separators.
QStringList marked(const QWidget& menu) {
    QStringList texts;
    for (const QAction* const item : menu.actions()) {
        if (!item->isSeparator()) {
            texts.append(item->text());
        }
    }
    return texts;
}

TEST_F(MainMenuTest, theMenusAreTheApplicationMenuWindowAndHelp) {
    QStringList titles;
    for (const QAction* const action : window.menuBar()->actions()) {
        titles.append(shownText(*action));
    }
    EXPECT_EQ(titles, QStringList({u"Daily Steps"_s, u"Window"_s, u"Help"_s}));
}

TEST_F(MainMenuTest, theApplicationMenuHasTheseItemsInThisOrder) {
    EXPECT_EQ(lines(menu(0)),
              QStringList({u"About Daily Steps"_s, u"-"_s, u"Services"_s, u"-"_s,
                           u"Hide Daily Steps | Ctrl+H"_s, u"Hide Others | Ctrl+Alt+H"_s,
                           u"Show All"_s, u"-"_s, u"Quit Daily Steps | Ctrl+Q"_s}));
}

TEST_F(MainMenuTest, theWindowMenuHasTheseItemsInThisOrder) {
    EXPECT_EQ(lines(menu(1)),
              QStringList({u"Minimize | Ctrl+M"_s, u"Zoom"_s, u"-"_s, u"Bring All to Front"_s}));
}

TEST_F(MainMenuTest, theHelpMenuHasOneItemWithoutAShortcut) {
    EXPECT_EQ(lines(menu(2)), QStringList({u"Getting Started…"_s}));
}

TEST_F(MainMenuTest, servicesIsADisabledEmptySubmenu) {
    const QAction& services = item(u"Services"_s);
    ASSERT_NE(services.menu(), nullptr);
    EXPECT_TRUE(services.menu()->isEmpty());
    EXPECT_FALSE(services.isEnabled());
}

TEST_F(MainMenuTest, hideOthersIsDisabledWithoutAWindowManagerThatListsWindows) {
    EXPECT_FALSE(item(u"Hide Others"_s).isEnabled());
}

TEST_F(MainMenuTest, anAmpersandInTheApplicationsNameIsShownAsItIs) {
    MainMenu other(u"Steps & Miles"_s);
    QMainWindow otherWindow;
    other.installOn(otherWindow);
    const QAction* const first = otherWindow.menuBar()->actions().constFirst();
    EXPECT_EQ(first->text(), u"&Steps && Miles"_s);
    EXPECT_EQ(lines(*first->menu()).constLast(), u"Quit Steps & Miles | Ctrl+Q"_s);
}

TEST_F(MainMenuTest, everyMenuAndItemHasAnAccessKey) {
    EXPECT_EQ(marked(*window.menuBar()),
              QStringList({u"&Daily Steps"_s, u"&Window"_s, u"&Help"_s}));
    EXPECT_EQ(marked(menu(0)),
              QStringList({u"&About Daily Steps"_s, u"&Services"_s, u"&Hide Daily Steps"_s,
                           u"Hide &Others"_s, u"Sho&w All"_s, u"&Quit Daily Steps"_s}));
    EXPECT_EQ(marked(menu(1)), QStringList({u"&Minimize"_s, u"&Zoom"_s, u"&Bring All to Front"_s}));
    EXPECT_EQ(marked(menu(2)), QStringList({u"&Getting Started…"_s}));
}

TEST_F(MainMenuTest, aHeldKeyTriggersItsItemOnce) {
    for (int index = 0; index < 3; ++index) {
        for (const QAction* const action : menu(index).actions()) {
            EXPECT_TRUE(action->isSeparator() || action->menu() || !action->autoRepeat())
                << action->text().toStdString();
        }
    }
}

TEST_F(MainMenuTest, f10OpensTheFirstMenuOfEitherKindOfWindow) {
    AuxiliaryWindow auxiliary(QSize(360, 260), AuxiliaryWindow::Sizing::Fixed);
    main.installOn(auxiliary);
    for (QWidget* const one : {static_cast<QWidget*>(&window), static_cast<QWidget*>(&auxiliary)}) {
        one->show();
        one->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(one));
        const QMenu* const first = one->findChild<QMenuBar*>()->actions().constFirst()->menu();
        QTest::keyClick(one, Qt::Key_F10);
        ASSERT_TRUE(first->isVisible());
        EXPECT_EQ(first->activeAction(), first->actions().constFirst());
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        EXPECT_FALSE(first->isVisible());
    }
}

TEST_F(MainMenuTest, theRepeatsOfAHeldF10OpenNoMenu) {
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::simulateEvent(&window, true, Qt::Key_F10, {}, {}, true);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(MainMenuTest, aboutAndGettingStartedEmitTheirSignals) {
    const QSignalSpy about(&main, &MainMenu::aboutChosen);
    const QSignalSpy gettingStarted(&main, &MainMenu::gettingStartedChosen);
    item(u"About Daily Steps"_s).trigger();
    EXPECT_EQ(about.count(), 1);
    EXPECT_EQ(gettingStarted.count(), 0);
    item(u"Getting Started…"_s).trigger();
    EXPECT_EQ(gettingStarted.count(), 1);
}

TEST_F(MainMenuTest, aWindowGetsItsMenuBarOnce) {
    const QMenuBar* const bar = window.menuBar();
    main.installOn(window);
    EXPECT_EQ(window.menuBar(), bar);
    EXPECT_EQ(window.findChildren<QMenuBar*>().size(), 1);
}

TEST_F(MainMenuTest, menuBarsAreDestroyedWithTheirWindowOrTheMainMenu) {
    auto other = std::make_unique<MainMenu>(u"Other"_s);
    AuxiliaryWindow kept(QSize(360, 260), AuxiliaryWindow::Sizing::Fixed);
    other->installOn(kept);
    {
        QMainWindow gone;
        other->installOn(gone);
    }
    EXPECT_EQ(kept.findChildren<QMenuBar*>().size(), 1);
    other.reset();
    EXPECT_EQ(kept.findChildren<QMenuBar*>().size(), 0);
}

TEST_F(MainMenuTest, hideMinimisesAllOpenWindowsAndShowAllRestoresThem) {
    QWidget one;
    QWidget noButton;
    noButton.setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    QWidget closed;
    one.show();
    noButton.show();
    item(u"Hide Daily Steps"_s).trigger();
    EXPECT_TRUE(one.isMinimized());
    EXPECT_TRUE(noButton.isMinimized());
    item(u"Show All"_s).trigger();
    EXPECT_FALSE(one.isMinimized());
    EXPECT_FALSE(noButton.isMinimized());
    EXPECT_FALSE(closed.isVisible());
}

TEST_F(MainMenuTest, showAllDoesNotRestoreWindowsThatTheUserMinimised) {
    QWidget byUser;
    QWidget hidden;
    QWidget hiddenThenByUser;
    for (QWidget* const one : {&byUser, &hidden, &hiddenThenByUser}) {
        one->show();
    }
    byUser.showMinimized();
    item(u"Hide Daily Steps"_s).trigger();
    hiddenThenByUser.showNormal();
    hiddenThenByUser.showMinimized();
    item(u"Show All"_s).trigger();
    EXPECT_TRUE(byUser.isMinimized());
    EXPECT_FALSE(hidden.isMinimized());
    EXPECT_TRUE(hiddenThenByUser.isMinimized());
}

TEST_F(MainMenuTest, aWindowWithoutAMinimiseButtonGetsOneOnlyWhileItIsHidden) {
    QWidget other;
    other.setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    other.show();
    const auto hasButton = [&other] {
        return other.windowHandle()->flags().testFlag(Qt::WindowMinimizeButtonHint);
    };
    EXPECT_FALSE(hasButton());
    for (int time = 0; time < 2; ++time) {
        item(u"Hide Daily Steps"_s).trigger();
        EXPECT_TRUE(hasButton());
        item(u"Show All"_s).trigger();
        EXPECT_FALSE(hasButton());
    }
}

}  // namespace

}  // namespace ambulet
