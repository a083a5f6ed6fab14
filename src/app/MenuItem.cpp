#include "app/MenuItem.h"

#include <QAction>
#include <QMenu>

namespace ambulet {

QString menuText(QString title) {
    return title.replace(u'&', QLatin1String("&&"));
}

QAction* addMenuItem(QMenu& menu, const QString& title, const QKeySequence& key) {
    QAction* const item = menu.addAction(menuText(title));
    item->setMenuRole(QAction::NoRole);
    item->setShortcut(key);
    item->setShortcutContext(Qt::ApplicationShortcut);
    return item;
}

}  // namespace ambulet
