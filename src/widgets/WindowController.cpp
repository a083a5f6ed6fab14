#include "widgets/WindowController.h"

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
    QWidget* const shown = window();
    if (shown->isMinimized()) {
        shown->showNormal();
    } else {
        shown->show();
    }
    shown->raise();
    shown->activateWindow();
}
