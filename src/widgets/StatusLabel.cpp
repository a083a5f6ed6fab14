#include "widgets/StatusLabel.h"

#include <QAccessibleWidget>

namespace ambulet {

namespace {

class AccessibleStatusLabel : public QAccessibleWidget {
  public:
    explicit AccessibleStatusLabel(StatusLabel* label)
        : QAccessibleWidget(label, QAccessible::Notification) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? qobject_cast<StatusLabel*>(object())->text()
                                         : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface* accessibleFor(const QString& className, QObject* object) {
    auto* const label = className == QLatin1String(StatusLabel::staticMetaObject.className())
                            ? qobject_cast<StatusLabel*>(object)
                            : nullptr;
    return label == nullptr ? nullptr : new AccessibleStatusLabel(label);
}

}  // namespace

StatusLabel::StatusLabel(QWidget* parent) : LineLabel(parent) {
    QAccessible::installFactory(accessibleFor);
}

// Orca 43 does not speak a label's text that changes, but a notification that appears. Qt has an
// event for announcements only from 6.8 on.
void StatusLabel::announce(const QString& text) {
    setText(text);
    QAccessibleEvent appeared(this, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&appeared);
}

}  // namespace ambulet
