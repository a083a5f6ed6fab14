#pragma once

#include <QKeySequence>
#include <QString>

class QAction;
class QMenu;
class QWidget;

namespace ambulet {

/// `title` as the text of a new item of `menu`, a menu or a menu bar. The item shows exactly
/// `title`; its access key is a letter that no other item of `menu` has, if there is one. On macOS,
/// which has no access keys, there is none.
QString menuText(const QString& title, const QWidget& menu);

/// Adds an item to `menu` and returns it. `key` is its shortcut in the window that has the menu. Qt
/// does not move the item to another menu, not even on macOS.
QAction* addMenuItem(QMenu& menu, const QString& title, const QKeySequence& key = {});

}  // namespace ambulet
