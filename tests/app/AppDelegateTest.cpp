#include "app/AppDelegate.h"

#include "about/AboutWindowController.h"
#include "help/HelpWindowController.h"
#include "mainwindow/SettingsKeys.h"
#include "platform/Bundle.h"
#include "platform/UserDefaults.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class AppDelegateTest : public testing::Test {
  protected:
    ~AppDelegateTest() override {
        help().close();
        about().close();
    }

    static QWidget& help() { return *HelpWindowController::sharedController().window(); }
    static QWidget& about() { return *AboutWindowController::sharedController().window(); }

    static QMainWindow& mainWindow() {
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            if (auto* const found = qobject_cast<QMainWindow*>(window)) {
                return *found;
            }
        }
        throw std::logic_error("there is no main window");
    }

    // The item of the main window's menu bar.
    static QAction& item(const QString& text) {
        for (const QAction* const menu : mainWindow().menuBar()->actions()) {
            for (QAction* const found : menu->menu()->actions()) {
                if (found->text() == text) {
                    return *found;
                }
            }
        }
        throw std::out_of_range(text.toStdString());
    }

    // Runs the event loop until the application quits, or in vain for half a minute.
    static int run() {
        QTimer::singleShot(30000, [] { QCoreApplication::exit(1); });
        return QApplication::exec();
    }

    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(u"settings.ini"_s)};
    AppDelegate delegate{defaults, Bundle::main()};
};

TEST_F(AppDelegateTest, atTheVeryFirstStartTheGuideOpensInFrontOfTheMainWindow) {
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(mainWindow().isVisible());
    EXPECT_TRUE(help().isVisible());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&help()));
    EXPECT_FALSE(about().isVisible());
}

TEST_F(AppDelegateTest, anyStoredPathKeepsTheGuideAwayAlsoAnEmptyOneOrAMissingFiles) {
    for (const QString& path : {u""_s, u"/no/such/file.xml"_s}) {
        defaults.setString(SettingsKeys::xmlFilePath, path);
        AppDelegate started(defaults, Bundle::main());
        started.applicationDidFinishLaunching();
        EXPECT_TRUE(mainWindow().isVisible());
        EXPECT_FALSE(help().isVisible()) << path.toStdString();
    }
}

TEST_F(AppDelegateTest, aPathThatIsOnlyRegisteredDoesNotKeepTheGuideAway) {
    defaults.registerDefaults({{SettingsKeys::xmlFilePath, u"/a/file.xml"_s}});
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(help().isVisible());
}

TEST_F(AppDelegateTest, theMenusAreTheMainWindowsAndNameTheApplication) {
    delegate.applicationDidFinishLaunching();
    const QList<QAction*> menus = mainWindow().menuBar()->actions();
    ASSERT_EQ(menus.size(), 3);
    EXPECT_EQ(menus.constFirst()->text(), u"Daily Steps"_s);
}

TEST_F(AppDelegateTest, withoutADisplayNameTheMenusHaveTheNameOfTheProcess) {
    const Bundle nameless(folder.filePath(u"none.plist"_s), folder.path());
    AppDelegate other(defaults, nameless);
    other.applicationDidFinishLaunching();
    EXPECT_EQ(item(u"Quit test_app"_s).shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

TEST_F(AppDelegateTest, theMenusOpenTheAboutAndTheGettingStartedWindow) {
    defaults.setString(SettingsKeys::xmlFilePath, u""_s);
    delegate.applicationDidFinishLaunching();
    item(u"About Daily Steps"_s).trigger();
    EXPECT_TRUE(about().isVisible());
    EXPECT_FALSE(help().isVisible());
    item(u"Getting Started…"_s).trigger();
    EXPECT_TRUE(help().isVisible());
}

TEST_F(AppDelegateTest, closingTheLastWindowQuitsAndTheOthersCount) {
    delegate.applicationDidFinishLaunching();
    delegate.showAboutPanel();
    int left = 0;
    QTimer::singleShot(0, [] { mainWindow().close(); });
    QTimer::singleShot(100, [&left] {
        ++left;
        help().close();
    });
    QTimer::singleShot(200, [&left] {
        ++left;
        about().close();
    });
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(left, 2) << "it quit while windows were open";
}

TEST_F(AppDelegateTest, theQuitItemQuits) {
    delegate.applicationDidFinishLaunching();
    QTimer::singleShot(0, [] { item(u"Quit Daily Steps"_s).trigger(); });
    EXPECT_EQ(run(), 0);
}

TEST_F(AppDelegateTest, theKeysWorkInTheOtherWindowsAlsoWhenTheMainWindowIsClosed) {
    delegate.applicationDidFinishLaunching();
    delegate.showAboutPanel();
    mainWindow().close();
    for (QWidget* const window : {&help(), &about()}) {
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        QTest::keyClick(window, Qt::Key_H, Qt::ControlModifier);
        EXPECT_TRUE(help().isMinimized());
        EXPECT_TRUE(about().isMinimized());
        item(u"Show All"_s).trigger();
    }
    bool quit = false;
    QTimer::singleShot(0, [] { QTest::keyClick(&about(), Qt::Key_Q, Qt::ControlModifier); });
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &help(), [&quit] { quit = true; });
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(quit);
}

}  // namespace
