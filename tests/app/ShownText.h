#pragma once

#include <QAction>
#include <QMenu>
#include <QWidget>

#include <stdexcept>

namespace ambulet {

/// The text that a menu item shows: `text()` without the marks of access keys.
inline QString shownText(const QAction& item) {
    QString shown;
    const QString text = item.text();
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'&') {
            ++i;
        }
        shown += text.mid(i, 1);
    }
    return shown;
}

/// The item that shows `text` in one of the menus of `bar`, or in `bar` itself if that is a menu.
/// Throws std::out_of_range if there is none.
inline QAction& itemShowing(const QString& text, const QWidget& bar) {
    for (QAction* const item : bar.actions()) {
        if (shownText(*item) == text && qobject_cast<const QMenu*>(&bar) != nullptr) {
            return *item;
        }
        for (QAction* const inner : item->menu() ? item->menu()->actions() : QList<QAction*>()) {
            if (shownText(*inner) == text) {
                return *inner;
            }
        }
    }
    throw std::out_of_range(text.toStdString());
}

}  // namespace ambulet
