// State and formatters. The other concerns have sources of their own.

#include "mainwindow/MainWindowController.h"

#include "mainwindow/SettingsKeys.h"
#include "platform/UserDefaults.h"

namespace ambulet {

namespace {

constexpr double defaultStrideFeet = 2.5;

// Registers the default stride. The constructor calls it first, before anything can read the
// stride.
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
        _tableView->setDataSource(nullptr);  // the base class destroys the window after this
    }
}

double MainWindowController::strideFeet() const {
    return _defaults.doubleForKey(SettingsKeys::strideFootLength);
}

}  // namespace ambulet
