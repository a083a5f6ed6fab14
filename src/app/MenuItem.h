#pragma once

#include <QKeySequence>
#include <QString>

class QAction;
class QMenu;

namespace ambulet {

/// `title` escaped for a menu, so that an ampersand is shown and makes no access key.
QString menuText(QString title);

/// Adds an item to `menu` and returns it. `key` works in every window to which the item was added
/// as an action. Qt does not move the item to another menu, not even on macOS.
QAction* addMenuItem(QMenu& menu, const QString& title, const QKeySequence& key = {});

}  // namespace ambulet
