#include "app/AppDelegate.h"

#include "about/AboutWindowController.h"
#include "app/ShownText.h"
#include "help/HelpWindowController.h"
#include "mainwindow/SettingsKeys.h"
#include "platform/Bundle.h"
#include "platform/SettingsStore.h"
#include "platform/UserDefaults.h"
#include "support/ChangingBundle.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

// Records whether the application was asked to quit.
class QuitSpy final : public QObject {
  public:
    QuitSpy() { qApp->installEventFilter(this); }

    bool asked() const { return _asked; }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        _asked = _asked || event->type() == QEvent::Quit;
        return false;
    }

  private:
    bool _asked = false;
};

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

    // The item that shows `text` in a menu of the window.
    static QAction& item(const QString& text, const QWidget& window = mainWindow()) {
        return itemShowing(text, *window.findChild<QMenuBar*>());
    }

    // Runs the event loop until the application quits. Returns the exit status; 1 after 30 seconds.
    static int run() {
        QTimer::singleShot(30000, [] { QCoreApplication::exit(1); });
        return QApplication::exec();
    }

    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(u"settings.ini"_s)};
    AppDelegate delegate{defaults, Bundle::main()};
};

TEST_F(AppDelegateTest, theFirstStartOpensTheGuideInFrontOfTheMainWindow) {
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(mainWindow().isVisible());
    EXPECT_TRUE(help().isVisible());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&help()));
    EXPECT_FALSE(about().isVisible());
}

TEST_F(AppDelegateTest, theGuideDoesNotOpenIfAPathIsStoredEvenAnEmptyOneOrOneOfAMissingFile) {
    for (const QString& path : {u""_s, u"/no/such/file.xml"_s}) {
        defaults.setString(SettingsKeys::xmlFilePath, path);
        AppDelegate started(defaults, Bundle::main());
        started.applicationDidFinishLaunching();
        EXPECT_TRUE(mainWindow().isVisible());
        EXPECT_FALSE(help().isVisible()) << path.toStdString();
    }
}

TEST_F(AppDelegateTest, theGuideOpensIfThePathIsOnlyARegisteredDefault) {
    defaults.registerDefaults({{SettingsKeys::xmlFilePath, u"/a/file.xml"_s}});
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(help().isVisible());
}

TEST_F(AppDelegateTest, theGuideOpensIfTheBundleHasNoIdentifier) {
    const Bundle nameless(folder.filePath(u"none.plist"_s), folder.path());
    UserDefaults nowhere(SettingsStore::placeFor(nameless));
    AppDelegate other(nowhere, nameless);
    other.applicationDidFinishLaunching();
    EXPECT_TRUE(mainWindow().isVisible());
    EXPECT_TRUE(help().isVisible());
}

TEST_F(AppDelegateTest, theMainWindowHasTheMenuBarWithTheApplicationsName) {
    delegate.applicationDidFinishLaunching();
    const QList<QAction*> menus = mainWindow().menuBar()->actions();
    ASSERT_EQ(menus.size(), 3);
    EXPECT_EQ(shownText(*menus.constFirst()), u"Daily Steps"_s);
}

TEST_F(AppDelegateTest, theMenusShowTheProcessNameIfTheBundleHasNoDisplayName) {
    const Bundle nameless(folder.filePath(u"none.plist"_s), folder.path());
    AppDelegate other(defaults, nameless);
    other.applicationDidFinishLaunching();
    EXPECT_EQ(item(u"Quit test_app"_s).shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
}

TEST_F(AppDelegateTest, theMenuTitlesDoNotFollowChangesOfTheBundle) {
    const ChangingBundle changing(u"First"_s, u"1.5"_s);
    AppDelegate other(defaults, changing.bundle);
    other.applicationDidFinishLaunching();
    changing.change(u"Second"_s, u"2.5"_s);
    const QAction& menu = *mainWindow().menuBar()->actions().constFirst();
    Q_EMIT menu.menu()->aboutToShow();
    EXPECT_EQ(shownText(menu), u"First"_s);
    for (const QString& title : {u"About First"_s, u"Hide First"_s, u"Quit First"_s}) {
        EXPECT_NO_THROW(item(title)) << title.toStdString();
    }
    other.showAboutPanel();
    EXPECT_NO_THROW(item(u"About First"_s, about())) << "in a menu bar made after the change";
}

TEST_F(AppDelegateTest, eachWindowHasAMenuBarWithTheSameItems) {
    delegate.applicationDidFinishLaunching();
    delegate.showAboutPanel();
    delegate.showAboutPanel();
    const auto texts = [](const QWidget& window) {
        const QList<QMenuBar*> bars = window.findChildren<QMenuBar*>();
        EXPECT_EQ(bars.size(), 1);
        QStringList found;
        for (const QAction* const menu : bars.constFirst()->actions()) {
            for (const QAction* const action : menu->menu()->actions()) {
                found.append(menu->text() + u" > "_s + action->text());
            }
        }
        return found;
    };
    const QStringList inMain = texts(mainWindow());
    EXPECT_EQ(inMain.size(), 14);
    EXPECT_EQ(texts(help()), inMain);
    EXPECT_EQ(texts(about()), inMain);
}

TEST_F(AppDelegateTest, theMenusOfTheGuideAndOfAboutWorkAfterTheOtherWindowsAreClosed) {
    delegate.applicationDidFinishLaunching();
    mainWindow().close();
    item(u"About Daily Steps"_s, help()).trigger();
    EXPECT_TRUE(about().isVisible());
    help().close();
    item(u"Getting Started…"_s, about()).trigger();
    EXPECT_TRUE(help().isVisible());
}

TEST_F(AppDelegateTest, windowsHiddenFromOneWindowsMenuCanBeShownFromAnothers) {
    delegate.applicationDidFinishLaunching();
    item(u"Hide Daily Steps"_s, help()).trigger();
    ASSERT_TRUE(mainWindow().isMinimized());
    item(u"Show All"_s, mainWindow()).trigger();
    EXPECT_FALSE(help().isMinimized());
    EXPECT_FALSE(mainWindow().isMinimized());
}

TEST_F(AppDelegateTest, menuItemsOpenTheAboutAndTheGettingStartedWindow) {
    defaults.setString(SettingsKeys::xmlFilePath, u""_s);
    delegate.applicationDidFinishLaunching();
    item(u"About Daily Steps"_s).trigger();
    EXPECT_TRUE(about().isVisible());
    EXPECT_FALSE(help().isVisible());
    item(u"Getting Started…"_s).trigger();
    EXPECT_TRUE(help().isVisible());
}

TEST_F(AppDelegateTest, onlyClosingTheLastOfTheThreeWindowsQuits) {
    delegate.applicationDidFinishLaunching();
    delegate.showAboutPanel();
    const QuitSpy quit;
    bool allClosed = false;
    // Each window is closed after the events of closing the window before it are handled.
    QTimer::singleShot(0, [&] {
        mainWindow().close();
        QTimer::singleShot(0, [&] {
            EXPECT_FALSE(quit.asked()) << "the guide and the About window are open";
            help().close();
            QTimer::singleShot(0, [&] {
                EXPECT_FALSE(quit.asked()) << "the About window is open";
                about().close();
                allClosed = true;
            });
        });
    });
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(allClosed);
    EXPECT_TRUE(quit.asked());
}

TEST_F(AppDelegateTest, theQuitItemQuits) {
    delegate.applicationDidFinishLaunching();
    QTimer::singleShot(0, [] { item(u"Quit Daily Steps"_s).trigger(); });
    EXPECT_EQ(run(), 0);
}

TEST_F(AppDelegateTest, shortcutsWorkInTheGuideAndInAboutWhenNoOtherWindowIsOpen) {
    delegate.applicationDidFinishLaunching();
    delegate.showAboutPanel();
    mainWindow().close();
    for (QWidget* const window : {&help(), &about()}) {
        SCOPED_TRACE(window->windowTitle().toStdString());
        (window == &help() ? about() : help()).close();
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
        QTest::keyClick(window, Qt::Key_H, Qt::ControlModifier);
        EXPECT_TRUE(window->isMinimized());
        item(u"Show All"_s).trigger();
        const QuitSpy quit;
        QTimer::singleShot(0,
                           [window] { QTest::keyClick(window, Qt::Key_Q, Qt::ControlModifier); });
        EXPECT_EQ(run(), 0);
        EXPECT_TRUE(quit.asked());
    }
}

}  // namespace

}  // namespace ambulet
