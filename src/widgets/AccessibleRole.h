#pragma once

#include <QAccessibleWidget>

namespace ambulet {

/// Gives all widgets of the class `Widget` the role `role` for assistive programs. Call this in the
/// constructor of the class.
template <typename Widget, QAccessible::Role role>
void setAccessibleRole() {
    // Qt ignores repeated calls with the same function.
    QAccessible::installFactory(
        [](const QString& className, QObject* object) -> QAccessibleInterface* {
            return className == QLatin1String(Widget::staticMetaObject.className())
                       ? new QAccessibleWidget(qobject_cast<QWidget*>(object), role)
                       : nullptr;
        });
}

}  // namespace ambulet
