#include "app/ProgramWindows.h"

#include "widgets/BringToFront.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace ambulet {

namespace ProgramWindows {
namespace {

// Marks a window as hidden by hideAll() until the window is restored, by whatever means.
//
// Some window managers refuse to minimise a window without a minimise button. Such a window gets
// the button for as long as it is hidden.
class HiddenMark final : public QObject {
  public:
    explicit HiddenMark(QWidget& window)
        : QObject(&window),
          _lendsButton(!window.windowFlags().testFlag(Qt::WindowMinimizeButtonHint)) {
        if (_lendsButton) {
            window.windowHandle()->setFlag(Qt::WindowMinimizeButtonHint);
        }
        window.installEventFilter(this);
    }

    static bool isOn(const QWidget& window) {
        const QObjectList& children = window.children();
        return std::any_of(children.begin(), children.end(), [](const QObject* child) {
            const auto* const mark = dynamic_cast<const HiddenMark*>(child);
            return mark != nullptr && !mark->_removed;
        });
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* const window = qobject_cast<QWidget*>(watched);
        if (event->type() == QEvent::WindowStateChange && !window->isMinimized()) {
            if (_lendsButton) {
                window->windowHandle()->setFlag(Qt::WindowMinimizeButtonHint, false);
            }
            window->removeEventFilter(this);
            _removed = true;
            deleteLater();
        }
        return false;
    }

  private:
    const bool _lendsButton;
    bool _removed = false;
};

bool isOpen(const QWidget& widget) {
    return widget.windowType() == Qt::Window && widget.isVisible();
}

}  // namespace

QList<QWidget*> open() {
    QList<QWidget*> windows;
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (isOpen(*widget)) {
            windows.append(widget);
        }
    }
    std::sort(windows.begin(), windows.end(), [](const QWidget* one, const QWidget* other) {
        return one->windowTitle().localeAwareCompare(other->windowTitle()) < 0;
    });
    return windows;
}

QWidget* front() {
    QWidget* const active = QApplication::activeWindow();
    return active != nullptr && isOpen(*active) ? active : nullptr;
}

void hideAll() {
    for (QWidget* const window : open()) {
        if (!window->isMinimized()) {
            new HiddenMark(*window);
            window->showMinimized();
        }
    }
}

void showAll() {
    QWidget* const last = front();
    for (QWidget* const window : open()) {
        if (HiddenMark::isOn(*window)) {
            // bringToFront() would give the window the keyboard focus as soon as it is mapped.
            window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
        }
    }
    if (last != nullptr) {
        bringToFront(*last);
    }
}

void bringAllToFront() {
    QWidget* const last = front();
    for (QWidget* const window : open()) {
        if (window != last && !window->isMinimized()) {
            window->raise();
        }
    }
    if (last != nullptr) {
        last->raise();
    }
}

}  // namespace ProgramWindows

}  // namespace ambulet
