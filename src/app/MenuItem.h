#pragma once

#include <QKeySequence>
#include <QString>

class QAction;
class QMenu;

namespace ambulet {

/// `title` as menus take it, to be shown as it is.
QString menuText(QString title);

/// Adds an item to `menu`, with a key that works in all of the program's windows that have the
/// item among their actions. The toolkit leaves it where it is, on macOS too.
QAction* addMenuItem(QMenu& menu, const QString& title, const QKeySequence& key = {});

}  // namespace ambulet
