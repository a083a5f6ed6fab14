#include "app/AppDelegate.h"

#include "about/AboutWindowController.h"
#include "app/MainMenu.h"
#include "app/OtherApplications.h"
#include "help/HelpWindowController.h"
#include "mainwindow/SettingsKeys.h"
#include "platform/Bundle.h"
#include "platform/UserDefaults.h"
#include "widgets/AuxiliaryWindow.h"

#include <QApplication>
#include <QMainWindow>

namespace ambulet {

namespace {

// A second copy of the program restores the same frame as the first. So if another application has
// a window at the same place, this window is moved to a place without one.
void stepAside(QWidget& window) {
    constexpr int step = 30;
    // If no frame is remembered, the window manager places the window.
    while (
        window.testAttribute(Qt::WA_Moved) && !window.isMaximized() &&
        OtherApplications::haveWindowAt(window.geometry().topLeft() * window.devicePixelRatio())) {
        window.setGeometry(window.geometry().translated(step, step));
    }
}

}  // namespace

AppDelegate::AppDelegate(UserDefaults& defaults, const Bundle& bundle)
    : _defaults(defaults), _bundle(bundle) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
    QApplication::setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
    buildMainMenu();
    _windowController = std::make_unique<MainWindowController>(_defaults, _bundle);
    _mainMenu->installOn(*qobject_cast<QMainWindow*>(_windowController->window()));
    stepAside(*_windowController->window());
    _windowController->showWindow();
    // The file need not exist any more: the guide is for users who have never chosen one.
    if (!_defaults.persistent(SettingsKeys::xmlFilePath)) {
        showGettingStarted();
    }
}

void AppDelegate::buildMainMenu() {
    _mainMenu = std::make_unique<MainMenu>(_bundle.displayName());
    connect(_mainMenu.get(), &MainMenu::aboutChosen, this, &AppDelegate::showAboutPanel);
    connect(_mainMenu.get(), &MainMenu::gettingStartedChosen, this,
            &AppDelegate::showGettingStarted);
}

void AppDelegate::showAboutPanel() {
    show(AboutWindowController::sharedController());
}

void AppDelegate::showGettingStarted() {
    show(HelpWindowController::sharedController());
}

void AppDelegate::show(WindowController& controller) const {
    _mainMenu->installOn(*qobject_cast<AuxiliaryWindow*>(controller.window()));
    controller.showWindow();
}

}  // namespace ambulet
