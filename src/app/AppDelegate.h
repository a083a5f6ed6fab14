#pragma once

#include "mainwindow/MainWindowController.h"

#include <QObject>

#include <memory>

namespace ambulet {

class Bundle;
class MainMenu;
class UserDefaults;

/// Starts the application: main menu, main window, and the Getting Started window if no file was
/// ever chosen. Shows the About and the Getting Started window when their menu items are chosen.
/// Owns the main window's controller. Main thread only.
class AppDelegate final : public QObject {
    Q_OBJECT

  public:
    /// The settings and the bundle must outlive the delegate.
    AppDelegate(UserDefaults& defaults, const Bundle& bundle);
    ~AppDelegate() override;

    /// Builds the main menu and shows the main window. If no file was ever chosen, shows the
    /// Getting Started window in front of the main window. Call this once, from the event loop.
    void applicationDidFinishLaunching();

    /// Shows the About window.
    void showAboutPanel();

    /// Shows the Getting Started window at its first page.
    void showGettingStarted();

    /// Always true. Minimised windows count as open; so do the Getting Started and About windows.
    static bool applicationShouldTerminateAfterLastWindowClosed() { return true; }

  private:
    void buildMainMenu();
    void show(WindowController& controller) const;

    UserDefaults& _defaults;
    const Bundle& _bundle;
    std::unique_ptr<MainMenu> _mainMenu;
    std::unique_ptr<MainWindowController> _windowController;
};

}  // namespace ambulet
