#include "app/ApplicationMenu.h"

#include "app/MenuItem.h"
#include "app/OtherApplications.h"
#include "app/ProgramWindows.h"

#include <QApplication>
#include <QWindow>

namespace ambulet {

using namespace Qt::StringLiterals;

ApplicationMenu::ApplicationMenu(const QString& title, const QString& applicationName,
                                 OtherApplications& others, QWidget* parent)
    : QMenu(title, parent) {
    QAction* const about = addMenuItem(*this, u"About "_s + applicationName);
    about->setMenuRole(QAction::AboutRole);
    connect(about, &QAction::triggered, this, &ApplicationMenu::aboutChosen);
#ifdef Q_OS_MACOS
    Q_UNUSED(others);
#else
    addSeparator();
    addHidingItems(applicationName, others);
    addSeparator();
#endif
    QAction* const quit = addMenuItem(*this, u"Quit "_s + applicationName, Qt::CTRL | Qt::Key_Q);
    quit->setMenuRole(QAction::QuitRole);
    connect(quit, &QAction::triggered, qApp, &QCoreApplication::quit);
}

void ApplicationMenu::addHidingItems(const QString& applicationName, OtherApplications& others) {
    addMenu(menuText(u"Services"_s, *this))->setEnabled(false);  // services exist on macOS only
    addSeparator();
    connect(addMenuItem(*this, u"Hide "_s + applicationName, Qt::CTRL | Qt::Key_H),
            &QAction::triggered, this, &ProgramWindows::hideAll);

    QAction* const hideOthers =
        addMenuItem(*this, u"Hide Others"_s, Qt::CTRL | Qt::ALT | Qt::Key_H);
    connect(hideOthers, &QAction::triggered, this, [&others] { others.hide(); });
    hideOthers->setEnabled(false);  // updated when another window gets the focus
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, hideOthers,
            [hideOthers] { hideOthers->setEnabled(OtherApplications::canHide()); });

    connect(addMenuItem(*this, u"Show All"_s), &QAction::triggered, this, [&others] {
        others.show();
        ProgramWindows::showAll();
    });
}

}  // namespace ambulet
