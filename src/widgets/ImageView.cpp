// The picture is scaled to the screen's own pixels and painted one to one, so that it is as sharp
// as the screen, at any scale factor.

#include "widgets/ImageView.h"

#include <QPainter>

namespace ambulet {

void ImageView::setImage(const QImage& image) {
    _image = image;
    _scaled = QPixmap();
    update();
}

void ImageView::paintEvent(QPaintEvent* /*event*/) {
    if (_image.isNull()) {
        return;
    }
    QPainter painter(this);
    const QTransform toScreen = painter.deviceTransform();
    const QRect room = toScreen.mapRect(QRectF(rect())).toRect();
    const QSize pixels = _image.size().scaled(room.size(), Qt::KeepAspectRatio);
    if (_scaled.size() != pixels) {
        _scaled = QPixmap::fromImage(
            _image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    const QSize free = room.size() - pixels;
    painter.setWorldTransform(toScreen.inverted(), true);
    painter.drawPixmap(room.topLeft() + QPoint(free.width() / 2, free.height() / 2), _scaled);
}

}  // namespace ambulet
