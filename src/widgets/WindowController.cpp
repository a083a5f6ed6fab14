#include "widgets/WindowController.h"

#include "widgets/BringToFront.h"

#include <QShortcut>

namespace ambulet {

WindowController::WindowController() = default;

WindowController::~WindowController() = default;

QWidget* WindowController::window() {
    if (!_window) {
        _window = loadWindow();
        auto* const close =
            new QShortcut(QKeySequence::Close, _window.get(), _window.get(), &QWidget::close);
        close->setAutoRepeat(false);  // a held key would close one window after the other
        windowDidLoad();
    }
    return _window.get();
}

void WindowController::showWindow() {
    bringToFront(*window());
}

}  // namespace ambulet
