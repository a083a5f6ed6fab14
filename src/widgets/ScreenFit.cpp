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
    QList<QRect> areas;
    for (const QScreen* const screen : QGuiApplication::screens()) {
        areas.append(screen->availableGeometry());
    }
    return isReachable(titleBar, areas);
}

}  // namespace

bool isReachable(const QRect& titleBar, const QList<QRect>& areas) {
    return std::any_of(areas.begin(), areas.end(), [&titleBar](const QRect& area) {
        const QRect seen = area & titleBar;
        return seen.height() == titleBar.height() &&
               seen.width() >= std::min(reachableWidth, titleBar.width());
    });
}

QPoint placeInArea(const QRect& frame, const QRect& area) {
    const QSize free = (area.size() - frame.size()).expandedTo(QSize(0, 0));
    return {std::clamp(frame.x(), area.x(), area.x() + free.width()),
            std::clamp(frame.y(), area.y(), area.y() + free.height())};
}

QPoint centeredPlace(QSize frame, const QRect& area) {
    const QSize free = (area.size() - frame).expandedTo(QSize(0, 0));
    return area.topLeft() + QPoint(free.width() / 2, free.height() / 4);
}

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
    const QRect frame = window.geometry().marginsAdded(frameMargins(window));
    moveFrame(window, placeInArea(frame, window.screen()->availableGeometry()));
}

}  // namespace ambulet
