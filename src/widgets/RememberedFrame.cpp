#include "widgets/RememberedFrame.h"

#include "widgets/ScreenFit.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

#include <chrono>
#include <utility>

namespace ambulet {

namespace {

// Dragging a window moves it many times a second. Storing waits until the window rests.
constexpr std::chrono::milliseconds restBeforeSaving(500);

}  // namespace

void RememberedFrame::attach(QWidget& window, const std::optional<QByteArray>& stored,
                             Store store) {
    new RememberedFrame(window, stored, std::move(store));
}

RememberedFrame::RememberedFrame(QWidget& window, const std::optional<QByteArray>& stored,
                                 Store store)
    : QObject(&window), _window(window), _stored(stored), _store(std::move(store)) {
    if (_stored) {
        _window.restoreGeometry(*_stored);
    }
    _rest.setSingleShot(true);
    _rest.setInterval(restBeforeSaving);
    connect(&_rest, &QTimer::timeout, this, &RememberedFrame::save);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &RememberedFrame::save);
    // Installed on the application, because the Expose event goes to the window's QWindow, which
    // does not exist yet.
    qApp->installEventFilter(this);
}

bool RememberedFrame::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (watched == &_window) {
        if (type == QEvent::Close) {
            save();
        } else if (type == QEvent::Move || type == QEvent::Resize) {
            _rest.start();
        }
    } else if (type == QEvent::Expose && !_fitted && watched == _window.windowHandle()) {
        _fitted = true;
        fitOnScreen(_window);
    }
    return QObject::eventFilter(watched, event);
}

void RememberedFrame::save() {
    const QByteArray frame = _window.saveGeometry();
    if (_stored != frame) {
        _stored = frame;
        _store(frame);
    }
}

}  // namespace ambulet
