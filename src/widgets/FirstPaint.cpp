#include "widgets/FirstPaint.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <utility>

namespace ambulet {

namespace {

class FirstPaint final : public QObject {
  public:
    FirstPaint(QWidget& window, std::function<void()> then)
        : QObject(&window), _then(std::move(then)) {
        _timer.setSingleShot(true);
        connect(&_timer, &QTimer::timeout, this, [this] {
            deleteLater();
            _then();
        });
        _timer.start(std::chrono::milliseconds(100));
        window.installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            // The window is on the screen when the handling of this event has ended.
            _timer.start(0);
        }
        return false;
    }

  private:
    std::function<void()> _then;
    QTimer _timer;
};

}  // namespace

void afterFirstPaint(QWidget& window, std::function<void()> then) {
    new FirstPaint(window, std::move(then));  // the window's, until it has done its work
}

}  // namespace ambulet
