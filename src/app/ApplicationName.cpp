#include "app/ApplicationName.h"

#include "platform/Bundle.h"

#include <QAccessibleObject>
#include <QCoreApplication>

namespace ambulet {

namespace {

class NamedApplication final : public QAccessibleApplication {
  public:
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? Bundle::main().displayName()
                                         : QAccessibleApplication::text(kind);
    }
};

QAccessibleInterface* makeAccessible(const QString& /*className*/, QObject* object) {
    return object == QCoreApplication::instance() ? new NamedApplication : nullptr;
}

}  // namespace

void nameAccessibleApplication() {
    QAccessible::installFactory(makeAccessible);
}

}  // namespace ambulet
