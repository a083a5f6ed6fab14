#include "widgets/ScreenFit.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace ambulet {

namespace {

constexpr int reachableWidth = 50;
constexpr int leastHeight = 10;  // of the title bar, if the window draws it itself

// Whether the user can reach enough of the title bar to move the window.
bool canBeReached(const QWidget& window) {
    const QMargins margins = frameMargins(window);
    const QRect frame = window.geometry().marginsAdded(margins);
    const QRect titleBar(frame.topLeft(),
                         QSize(frame.width(), std::max(margins.top(), leastHeight)));
    const QList<QScreen*> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(), [&titleBar](const QScreen* screen) {
        const QRect seen = screen->availableGeometry() & titleBar;
        return seen.height() == titleBar.height() &&
               seen.width() >= std::min(reachableWidth, titleBar.width());
    });
}

}  // namespace

QMargins frameMargins(const QWidget& window) {
    return window.windowHandle() != nullptr ? window.windowHandle()->frameMargins() : QMargins();
}

void moveFrame(QWidget& window, QPoint place) {
    const QMargins margins = frameMargins(window);
    if (margins.isNull()) {
        window.move(place);  // applies to the frame that is added later
    } else {
        // Not move(), because QWidget may not know the margins of the frame yet.
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
    if (!shrinkToScreen(window) && canBeReached(window)) {
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
