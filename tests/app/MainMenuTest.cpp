#include "app/MainMenu.h"

#include <QMainWindow>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

// The items of a menu, one string each: "text" or "text | shortcut"; a separator is "-".
QStringList lines(const QMenu& menu) {
    QStringList found;
    for (const QAction* const item : menu.actions()) {
        QString line = item->isSeparator() ? u"-"_s : item->text();
        if (!item->shortcut().isEmpty()) {
            line += u" | "_s + item->shortcut().toString(QKeySequence::PortableText);
        }
        found.append(line);
    }
    return found;
}

class MainMenuTest : public testing::Test {
  protected:
    QMenu& menu(int index) { return *main.menuBar()->actions().at(index)->menu(); }

    QAction& item(const QString& text) {
        for (QAction* const bar : main.menuBar()->actions()) {
            for (QAction* const found : bar->menu()->actions()) {
                if (found->text() == text) {
                    return *found;
                }
            }
        }
        throw std::out_of_range(text.toStdString());
    }

    MainMenu main{u"Daily Steps"_s};
};

TEST_F(MainMenuTest, theMenusAreTheApplicationMenuWindowAndHelp) {
    QStringList titles;
    for (const QAction* const action : main.menuBar()->actions()) {
        titles.append(action->text());
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
    const MainMenu other(u"Steps & Miles"_s);
    EXPECT_EQ(other.menuBar()->actions().constFirst()->text(), u"Steps && Miles"_s);
    EXPECT_EQ(lines(*other.menuBar()->actions().constFirst()->menu()).constLast(),
              u"Quit Steps && Miles | Ctrl+Q"_s);
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

TEST_F(MainMenuTest, theMainWindowOwnsTheMenuBar) {
    const QPointer<QMenuBar> bar = main.menuBar();
    {
        QMainWindow window;
        main.installOn(window);
        EXPECT_EQ(window.menuBar(), bar);
    }
    EXPECT_TRUE(bar.isNull());
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

TEST_F(MainMenuTest, aWindowWithoutAMinimiseButtonGetsOneOnlyWhileItIsHidden) {
    QWidget window;
    window.setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    window.show();
    const auto hasButton = [&window] {
        return window.windowHandle()->flags().testFlag(Qt::WindowMinimizeButtonHint);
    };
    EXPECT_FALSE(hasButton());
    for (int time = 0; time < 2; ++time) {
        item(u"Hide Daily Steps"_s).trigger();
        EXPECT_TRUE(hasButton());
        item(u"Show All"_s).trigger();
        EXPECT_FALSE(hasButton());
    }
}

TEST_F(MainMenuTest, shortcutsWorkInAnotherWindowAfterTheMainWindowIsClosed) {
    QMainWindow window;
    main.installOn(window);
    window.show();
    QWidget other;
    main.addKeysTo(other);
    other.show();
    window.close();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    QTest::keyClick(&other, Qt::Key_H, Qt::ControlModifier);
    EXPECT_TRUE(other.isMinimized());
}

}  // namespace

}  // namespace ambulet
