// State and formatters. Each other concern has a source of its own.

#include "mainwindow/MainWindowController.h"

#include "mainwindow/SettingsKeys.h"
#include "platform/UserDefaults.h"

namespace ambulet {

namespace {

constexpr double defaultStrideFeet = 2.5;

// Before anything can read the stride.
UserDefaults& withDefaultsRegistered(UserDefaults& defaults) {
    defaults.registerDefaults({{SettingsKeys::strideFootLength, defaultStrideFeet}});
    return defaults;
}

}  // namespace

MainWindowController::MainWindowController(UserDefaults& defaults, const Bundle& bundle)
    : _defaults(withDefaultsRegistered(defaults)), _bundle(bundle), _exportFile(defaults),
      _displayFormatter(DateFormatter::mediumDate()), _stepsFormatter(0, 0), _milesFormatter(2, 2) {
}

MainWindowController::~MainWindowController() {
    if (_tableView) {
        _tableView->setDataSource(nullptr);  // the window outlives this part of the controller
    }
}

double MainWindowController::strideFeet() const {
    return _defaults.doubleForKey(SettingsKeys::strideFootLength);
}

}  // namespace ambulet
