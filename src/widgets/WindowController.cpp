#include "widgets/WindowController.h"

#include "widgets/BringToFront.h"

namespace ambulet {

WindowController::WindowController() = default;

WindowController::~WindowController() = default;

QWidget* WindowController::window() {
    if (!_window) {
        _window = loadWindow();
        windowDidLoad();
    }
    return _window.get();
}

void WindowController::showWindow() {
    bringToFront(*window());
}

}  // namespace ambulet
