#pragma once

#include <QKeySequence>
#include <QString>

class QAction;
class QMenu;
class QWidget;

namespace ambulet {

/// The text for a new item of `menu` (a menu or a menu bar) that shows exactly `title`. Its access
/// key is a character of `title` that is not the access key of an item of `menu` yet. Without such
/// a character, and on macOS, it has no access key.
QString menuText(const QString& title, const QWidget& menu);

/// Adds an item to `menu` and returns it. `key` is its shortcut in the window that has the menu. Qt
/// does not move the item to another menu, not even on macOS.
QAction* addMenuItem(QMenu& menu, const QString& title, const QKeySequence& key = {});

}  // namespace ambulet
