#include "widgets/ScreenFit.h"

#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace ambulet {

QMargins frameMargins(const QWidget& window) {
    return window.windowHandle() != nullptr ? window.windowHandle()->frameMargins() : QMargins();
}

void moveFrame(QWidget& window, QPoint place) {
    const QMargins margins = frameMargins(window);
    if (margins.isNull()) {
        window.move(place);  // the place of a frame added later
    } else {
        // move() may still assume the frame before the window was shown, that is none.
        window.setGeometry(QRect(place + QPoint(margins.left(), margins.top()), window.size()));
    }
}

bool shrinkToScreen(QWidget& window) {
    const QSize available =
        window.screen()->availableGeometry().size().shrunkBy(frameMargins(window));
    const QSize fitting = window.size().boundedTo(available);
    if (fitting == window.size()) {
        return false;
    }
    window.resize(fitting);
    return true;
}

void fitOnScreen(QWidget& window) {
    if (!shrinkToScreen(window)) {
        return;
    }
    const QRect available = window.screen()->availableGeometry();
    const QMargins margins = frameMargins(window);
    const QSize free = available.size() - window.size().grownBy(margins);
    const QRect frame = window.geometry().marginsAdded(margins);
    const auto inside = [](int place, int from, int length) {
        return std::clamp(place, from, from + std::max(0, length));
    };
    moveFrame(window, {inside(frame.x(), available.left(), free.width()),
                       inside(frame.y(), available.top(), free.height())});
}

}  // namespace ambulet
