#include "widgets/ScreenFit.h"

#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>

QMargins frameMargins(const QWidget& window) {
    return window.windowHandle() != nullptr ? window.windowHandle()->frameMargins() : QMargins();
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
    const QSize free = available.size() - window.size().grownBy(frameMargins(window));
    const auto inside = [](int place, int from, int room) {
        return std::clamp(place, from, from + std::max(0, room));
    };
    window.move(inside(window.x(), available.left(), free.width()),
                inside(window.y(), available.top(), free.height()));
}
