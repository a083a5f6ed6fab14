#include "app/MenuItem.h"

#include <QAction>
#include <QMenu>

#include <algorithm>

namespace ambulet {

namespace {

#ifdef Q_OS_MACOS
constexpr bool hasAccessKeys = false;
#else
constexpr bool hasAccessKeys = true;
#endif

bool isAccessKeyOf(QChar letter, const QList<QAction*>& items) {
    const QKeySequence key(Qt::ALT | Qt::Key(letter.toUpper().unicode()));
    return std::any_of(items.begin(), items.end(), [&key](const QAction* item) {
        return QKeySequence::mnemonic(item->text()) == key;
    });
}

// The index of the character in `title` that becomes the access key; -1 if there is none. Prefers
// the first characters of words.
qsizetype accessKeyIndex(const QString& title, const QList<QAction*>& items) {
    for (const bool firstOfWord : {true, false}) {
        for (qsizetype i = 0; i < title.size(); ++i) {
            const bool isFirst = i == 0 || !title[i - 1].isLetterOrNumber();
            if (title[i].isLetterOrNumber() && isFirst == firstOfWord &&
                !isAccessKeyOf(title[i], items)) {
                return i;
            }
        }
    }
    return -1;
}

}  // namespace

QString menuText(const QString& title, const QWidget& menu) {
    const qsizetype marked = hasAccessKeys ? accessKeyIndex(title, menu.actions()) : -1;
    QString text;
    for (qsizetype i = 0; i < title.size(); ++i) {
        if (i == marked || title[i] == u'&') {
            text += u'&';
        }
        text += title[i];
    }
    return text;
}

QAction* addMenuItem(QMenu& menu, const QString& title, const QKeySequence& key) {
    QAction* const item = menu.addAction(menuText(title, menu));
    item->setMenuRole(QAction::NoRole);
    item->setShortcut(key);
    item->setAutoRepeat(false);  // a held Ctrl+M would minimise one window after the other
    return item;
}

}  // namespace ambulet
