#include "app/AppDelegate.h"

#include "platform/Bundle.h"
#include "platform/UserDefaults.h"

void AppDelegate::applicationDidFinishLaunching() {
    _windowController =
        std::make_unique<MainWindowController>(UserDefaults::standard(), Bundle::main());
    _windowController->showWindow();
}
