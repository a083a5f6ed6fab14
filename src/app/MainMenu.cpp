#include "app/MainMenu.h"

#include "app/ApplicationMenu.h"
#include "app/MenuItem.h"
#include "app/WindowMenu.h"

#include <QMainWindow>

namespace ambulet {

using namespace Qt::StringLiterals;

MainMenu::MainMenu(const QString& applicationName) : _menuBar(new QMenuBar) {
    auto* const application = new ApplicationMenu(applicationName, _menuBar);
    connect(application, &ApplicationMenu::aboutChosen, this, &MainMenu::aboutChosen);
    _menuBar->addMenu(application);
    _menuBar->addMenu(new WindowMenu(_menuBar));
    connect(addMenuItem(*_menuBar->addMenu(u"Help"_s), u"Getting Started…"_s), &QAction::triggered,
            this, &MainMenu::gettingStartedChosen);
}

MainMenu::~MainMenu() {
    if (_menuBar && _menuBar->parent() == nullptr) {
        delete _menuBar;
    }
}

void MainMenu::installOn(QMainWindow& window) {
#ifdef Q_OS_MACOS
    // A menu bar without a window serves all of them, also when the main one is closed.
    Q_UNUSED(window);
#else
    window.setMenuBar(_menuBar);
#endif
}

void MainMenu::addKeysTo(QWidget& window) const {
    for (const QMenu* const menu : _menuBar->findChildren<QMenu*>(Qt::FindDirectChildrenOnly)) {
        for (QAction* const item : menu->actions()) {
            if (!item->shortcut().isEmpty()) {
                window.addAction(item);
            }
        }
    }
}

}  // namespace ambulet
