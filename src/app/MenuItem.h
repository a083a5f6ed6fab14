#pragma once

#include <QKeySequence>
#include <QString>

class QAction;
class QMenu;
class QWidget;

namespace ambulet {

/// The text for a new item of `menu` (a menu or a menu bar) that shows exactly `title`. The item's
/// access key is a letter or digit of `title` that is not the access key of another item of `menu`.
/// Without such a character, and on macOS, the item has no access key.
QString menuText(const QString& title, const QWidget& menu);

/// Adds an item to `menu` and returns it. `key` is its shortcut in the window that has the menu.
/// The item has the menu role NoRole, so Qt does not move it to another menu on macOS.
QAction* addMenuItem(QMenu& menu, const QString& title, const QKeySequence& key = {});

}  // namespace ambulet
