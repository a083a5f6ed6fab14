#include "widgets/AutoresizingLayout.h"

#include <QWidget>

#include <cmath>

namespace ambulet {

AutoresizingLayout::AutoresizingLayout(QSize initial, QWidget* parent)
    : QLayout(parent), _initial(initial) {
    setContentsMargins(0, 0, 0, 0);
}

AutoresizingLayout::~AutoresizingLayout() = default;

void AutoresizingLayout::add(std::unique_ptr<QWidget> view, const QRect& frame,
                             Horizontally horizontally, Vertically vertically) {
    QWidget* const added = view.release();
    addChildWidget(added);
    _places.push_back({std::make_unique<QWidgetItem>(added), frame, horizontally, vertically,
                       added->font().pixelSize()});
    scaleFont(_places.back());
    invalidate();
}

void AutoresizingLayout::setScale(double scale) {
    _scale = scale;
    for (const Place& place : _places) {
        scaleFont(place);
    }
    invalidate();
}

int AutoresizingLayout::scaled(int length) const {
    return static_cast<int>(std::lround(length * _scale));
}

QSize AutoresizingLayout::scaled(QSize size) const {
    return {scaled(size.width()), scaled(size.height())};
}

void AutoresizingLayout::scaleFont(const Place& place) const {
    if (place.fontPixels > 0) {
        QFont font = place.item->widget()->font();
        font.setPixelSize(scaled(place.fontPixels));
        place.item->widget()->setFont(font);
    }
}

void AutoresizingLayout::addItem(QLayoutItem* item) {
    // QLayout::addItem passes no frame. So the item gets its size hint, at the lower left corner.
    _places.push_back({std::unique_ptr<QLayoutItem>(item), QRect(QPoint(0, 0), item->sizeHint()),
                       Horizontally::RightMargin, Vertically::TopMargin, -1});
    invalidate();
}

int AutoresizingLayout::count() const {
    return static_cast<int>(_places.size());
}

QLayoutItem* AutoresizingLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? _places[static_cast<std::size_t>(index)].item.get()
                                         : nullptr;
}

QLayoutItem* AutoresizingLayout::takeAt(int index) {
    if (index < 0 || index >= count()) {
        return nullptr;
    }
    QLayoutItem* const taken = _places[static_cast<std::size_t>(index)].item.release();
    _places.erase(_places.begin() + index);
    return taken;
}

void AutoresizingLayout::setGeometry(const QRect& content) {
    QLayout::setGeometry(content);
    for (const Place& place : _places) {
        // Not through the item, which does not place a hidden widget, and lets the style add
        // margins.
        if (QWidget* const view = place.item->widget()) {
            view->setGeometry(frameWithin(place, content));
        } else {
            place.item->setGeometry(frameWithin(place, content));
        }
    }
}

QRect AutoresizingLayout::frameWithin(const Place& place, const QRect& content) const {
    const QSize growth = content.size() - scaled(_initial);
    QRect frame(QPoint(scaled(place.frame.x()), scaled(place.frame.y())),
                scaled(place.frame.size()));
    if (place.horizontally == Horizontally::Width) {
        frame.setWidth(frame.width() + growth.width());
    } else if (place.horizontally == Horizontally::LeftMargin) {
        frame.translate(growth.width(), 0);
    }
    if (place.vertically == Vertically::Height) {
        frame.setHeight(frame.height() + growth.height());
    } else if (place.vertically == Vertically::BottomMargin) {
        frame.translate(0, growth.height());
    }
    return {content.left() + frame.x(),
            content.top() + content.height() - frame.y() - frame.height(), frame.width(),
            frame.height()};
}

}  // namespace ambulet
