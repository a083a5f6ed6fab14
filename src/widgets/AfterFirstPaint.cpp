#include "widgets/AfterFirstPaint.h"

#include <QEvent>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <utility>

namespace ambulet {

namespace {

// The first painting usually takes a tenth of this.
constexpr std::chrono::milliseconds longestWait(100);

bool isAnyWindow(bool (QWindow::*state)() const) {
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::ranges::any_of(windows, [state](const QWindow* one) { return (one->*state)(); });
}

/// Destroys itself after the call.
class PendingCall final : public QObject {
  public:
    PendingCall(QObject& receiver, std::function<void()> action)
        : QObject(&receiver), _action(std::move(action)) {
        qGuiApp->installEventFilter(this);
        // Queued, because the caller may be about to show a window.
        QMetaObject::invokeMethod(this, &PendingCall::wait, Qt::QueuedConnection);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Expose && qobject_cast<QWindow*>(watched)->isExposed()) {
            // The window is painted after this filter, when it handles the event itself.
            QMetaObject::invokeMethod(this, &PendingCall::call, Qt::QueuedConnection);
        }
        return false;
    }

  private:
    void wait() {
        if (isAnyWindow(&QWindow::isExposed) || !isAnyWindow(&QWindow::isVisible)) {
            call();
        } else {
            QTimer::singleShot(longestWait, this, &PendingCall::call);
        }
    }

    void call() {
        if (const auto action = std::exchange(_action, nullptr)) {
            qGuiApp->removeEventFilter(this);
            deleteLater();
            action();
        }
    }

    std::function<void()> _action;  // null after the call
};

}  // namespace

void afterFirstPaint(QObject& receiver, std::function<void()> action) {
    new PendingCall(receiver, std::move(action));
}

}  // namespace ambulet
