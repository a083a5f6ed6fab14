#include "widgets/AuxiliaryWindow.h"

#include "widgets/AccessibleRole.h"
#include "widgets/AutoresizingLayout.h"
#include "widgets/ScreenFit.h"

#include <QApplication>
#include <QFontInfo>
#include <QKeyEvent>
#include <QMenuBar>
#include <QScreen>
#include <QShowEvent>
#include <QWindow>

namespace ambulet {

namespace {

// The views' frames and fonts are designed for a system font of 13 pixels.
constexpr int designPixels = 13;
constexpr int largestUsualPixels = 16;  // 12 points at 96 dots per inch

double scaleForUserFont() {
    const int pixels = QFontInfo(QApplication::font()).pixelSize();
    return pixels <= largestUsualPixels ? 1 : static_cast<double>(pixels) / designPixels;
}

}  // namespace

AuxiliaryWindow::AuxiliaryWindow(QSize content, Sizing sizing)
    : _sizing(sizing), _content(new AutoresizingLayout(content, this)) {
    // Qt would give a plain top-level widget the role Filler.
    setAccessibleRole<AuxiliaryWindow, QAccessible::Window>();
    Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                            Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    if (sizing == Sizing::Resizable) {
        flags |= Qt::WindowMaximizeButtonHint;
        resize(content);
    } else {
        _content->setSizeConstraint(QLayout::SetFixedSize);
    }
    setWindowFlags(flags);
    followUserFont();
}

void AuxiliaryWindow::addMenuBar(QMenuBar* menuBar) {
    _content->setMenuBar(menuBar);
    resize(width(), height() + menuBar->heightForWidth(width()));
}

void AuxiliaryWindow::followUserFont() {
    const QSize before = _content->sizeHint();
    _scale = scaleForUserFont();
    _content->setScale(_scale);
    if (_sizing == Sizing::Resizable) {
        resize(size() + _content->sizeHint() - before);
    }
    applyMinimumFrameSize();
}

void AuxiliaryWindow::setMinimumFrameSize(QSize size) {
    _minimumFrameSize = size;
    applyMinimumFrameSize();
}

void AuxiliaryWindow::center() {
    if (isMaximized() || isFullScreen()) {
        return;
    }
    shrinkToScreen(*this);
    const QMargins margins = frameMargins(*this);
    moveFrame(*this, centeredPlace(size().grownBy(margins), screen()->availableGeometry()));
    _centeredWith = margins;
}

void AuxiliaryWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!event->spontaneous()) {
        center();
    }
}

void AuxiliaryWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel) && !event->isAutoRepeat()) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

bool AuxiliaryWindow::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::WinIdChange && windowHandle() != nullptr) {
        windowHandle()->installEventFilter(this);
    } else if (event->type() == QEvent::ApplicationFontChange) {
        followUserFont();
    }
    return handled;
}

bool AuxiliaryWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == windowHandle() && event->type() == QEvent::Expose) {
        frameMayHaveChanged();
    }
    return QWidget::eventFilter(watched, event);
}

void AuxiliaryWindow::frameMayHaveChanged() {
    applyMinimumFrameSize();
    if (_centeredWith && *_centeredWith != frameMargins(*this)) {
        center();
    }
    _centeredWith.reset();
}

void AuxiliaryWindow::applyMinimumFrameSize() {
    if (_minimumFrameSize) {
        const QSize scaled = *_minimumFrameSize * _scale;
        setMinimumSize(
            scaled.boundedTo(screen()->availableGeometry().size()).shrunkBy(frameMargins(*this)));
    }
}

}  // namespace ambulet
