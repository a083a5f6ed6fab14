#include "app/MainMenu.h"

#include "app/ApplicationMenu.h"
#include "app/MenuItem.h"
#include "app/WindowMenu.h"
#include "widgets/AuxiliaryWindow.h"

#include <QMainWindow>
#include <QShortcut>

#include <algorithm>

namespace ambulet {

using namespace Qt::StringLiterals;

MainMenu::MainMenu(const QString& applicationName) : _applicationName(applicationName) {
#ifdef Q_OS_MACOS
    makeMenuBar();  // without a parent, a menu bar belongs to all windows
#endif
}

MainMenu::~MainMenu() {
    for (const QPointer<QMenuBar>& bar : _menuBars) {
        delete bar;
    }
}

QMenuBar* MainMenu::makeMenuBar() {
    auto* const bar = new QMenuBar;
    _menuBars.emplace_back(bar);
    auto* const application = new ApplicationMenu(menuText(_applicationName, *bar),
                                                  _applicationName, _otherApplications, bar);
    connect(application, &ApplicationMenu::aboutChosen, this, &MainMenu::aboutChosen);
    bar->addMenu(application);
    bar->addMenu(new WindowMenu(menuText(u"Window"_s, *bar), bar));
    QMenu* const help = bar->addMenu(menuText(u"Help"_s, *bar));
    connect(addMenuItem(*help, u"Getting Started…"_s), &QAction::triggered, this,
            &MainMenu::gettingStartedChosen);
    auto* const openFirst = new QShortcut(Qt::Key_F10, bar, [bar, application] {
        bar->setActiveAction(application->menuAction());
        application->setActiveAction(application->actions().constFirst());
    });
    openFirst->setAutoRepeat(false);
    return bar;
}

void MainMenu::installOn(QMainWindow& window) {
    if (!isInstalledOn(window)) {
        window.setMenuBar(makeMenuBar());
    }
}

void MainMenu::installOn(AuxiliaryWindow& window) {
    if (!isInstalledOn(window)) {
        window.addMenuBar(makeMenuBar());
    }
}

bool MainMenu::isInstalledOn(const QWidget& window) const {
    return std::any_of(_menuBars.begin(), _menuBars.end(),
                       [&window](const QPointer<QMenuBar>& bar) {
                           return bar && (bar->isWindow() || bar->window() == &window);
                       });
}

}  // namespace ambulet
