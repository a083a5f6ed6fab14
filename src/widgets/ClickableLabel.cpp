#include "widgets/ClickableLabel.h"

#include "widgets/FocusOutline.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace ambulet {

namespace {

class AccessibleClickableLabel : public QAccessibleWidget {
  public:
    explicit AccessibleClickableLabel(ClickableLabel* label)
        : QAccessibleWidget(label, QAccessible::Button) {}

    QString text(QAccessible::Text kind) const override {
        switch (kind) {
        case QAccessible::Name:
            return label()->text();
        case QAccessible::Description:
            return label()->toolTip();
        default:
            return QAccessibleWidget::text(kind);
        }
    }

    QStringList actionNames() const override {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override {
        if (name == pressAction()) {
            Q_EMIT label()->clicked();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

  private:
    ClickableLabel* label() const { return qobject_cast<ClickableLabel*>(object()); }
};

QAccessibleInterface* accessibleFor(const QString& className, QObject* object) {
    auto* const label = className == QLatin1String(ClickableLabel::staticMetaObject.className())
                            ? qobject_cast<ClickableLabel*>(object)
                            : nullptr;
    return label == nullptr ? nullptr : new AccessibleClickableLabel(label);
}

}  // namespace

ClickableLabel::ClickableLabel(QWidget* parent) : LineLabel(parent) {
    QAccessible::installFactory(accessibleFor);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
}

void ClickableLabel::mousePressEvent(QMouseEvent* event) {
    _pressed = event->button() == Qt::LeftButton;
    event->setAccepted(_pressed);
}

void ClickableLabel::mouseReleaseEvent(QMouseEvent* event) {
    const bool click = _pressed && event->button() == Qt::LeftButton &&
                       rect().contains(event->position().toPoint());
    _pressed = false;
    if (click) {
        Q_EMIT clicked();
    }
}

void ClickableLabel::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT clicked();
        break;
    default:
        LineLabel::keyPressEvent(event);
    }
}

void ClickableLabel::focusInEvent(QFocusEvent* event) {
    LineLabel::focusInEvent(event);
    update();
}

void ClickableLabel::focusOutEvent(QFocusEvent* event) {
    LineLabel::focusOutEvent(event);
    update();
}

void ClickableLabel::setDrawnLength(std::optional<qsizetype> length) {
    _drawnLength = length;
    update();
}

void ClickableLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    drawLine(painter, text().left(_drawnLength.value_or(text().size())));
    if (hasFocus()) {
        QRect marked = rect();
        marked.setWidth(qMin(marked.width(), sizeHint().width()));  // only around the text
        drawFocusOutline(painter, marked, palette(), {palette().color(QPalette::Window)});
    }
}

}  // namespace ambulet
