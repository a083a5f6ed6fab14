#include "app/WindowMenu.h"

#include "app/MenuItem.h"
#include "app/ProgramWindows.h"
#include "widgets/BringToFront.h"

#include <QGuiApplication>
#include <QWindow>

namespace ambulet {

using namespace Qt::StringLiterals;

WindowMenu::WindowMenu(const QString& title, QWidget* parent)
    : QMenu(title, parent), _minimize(addMenuItem(*this, u"Minimize"_s, Qt::CTRL | Qt::Key_M)),
      _zoom(addMenuItem(*this, u"Zoom"_s)) {
    addSeparator();
    QAction* const bringAllToFront = addMenuItem(*this, u"Bring All to Front"_s);

    connect(_minimize, &QAction::triggered, this, &WindowMenu::minimizeFront);
    connect(_zoom, &QAction::triggered, this, &WindowMenu::zoomFront);
    connect(bringAllToFront, &QAction::triggered, this, &ProgramWindows::bringAllToFront);
    connect(this, &QMenu::aboutToShow, this, &WindowMenu::listWindows);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &WindowMenu::updateItems);
    updateItems();
}

void WindowMenu::minimizeFront() {
    if (QWidget* const window = ProgramWindows::front()) {
        window->showMinimized();
    }
}

void WindowMenu::zoomFront() {
    if (QWidget* const window = ProgramWindows::front()) {
        window->setWindowState(window->windowState() ^ Qt::WindowMaximized);
    }
}

void WindowMenu::updateItems() {
    const QWidget* const window = ProgramWindows::front();
    const auto has = [window](Qt::WindowType button) {
        return window != nullptr && window->windowFlags().testFlag(button);
    };
    _minimize->setEnabled(has(Qt::WindowMinimizeButtonHint));
    _zoom->setEnabled(has(Qt::WindowMaximizeButtonHint));
}

void WindowMenu::listWindows() {
    qDeleteAll(_list);
    _list.clear();
    const QList<QWidget*> windows = ProgramWindows::open();
    if (windows.isEmpty()) {
        return;
    }
    _list.append(addSeparator());
    for (QWidget* const window : windows) {
        QAction* const item = addMenuItem(*this, window->windowTitle());
        // Only the item of the window in front is checkable, because styles draw an empty box
        // beside a checkable item that is not checked.
        item->setCheckable(window == ProgramWindows::front());
        item->setChecked(item->isCheckable());
        connect(item, &QAction::triggered, window, [window] { bringToFront(*window); });
        _list.append(item);
    }
}

}  // namespace ambulet
