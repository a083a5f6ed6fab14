// The image is scaled to the number of screen pixels that it covers, and painted pixel by pixel. So
// it is sharp at every scale factor of the screen.

#include "widgets/ImageView.h"

#include "widgets/AccessibleRole.h"

#include <QPainter>

namespace ambulet {

ImageView::ImageView() {
    setAccessibleRole<ImageView, QAccessible::Graphic>();
}

void ImageView::setImage(const QImage& image, const QString& description) {
    setAccessibleName(image.isNull() ? QString() : description);
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
    const QRect area = toScreen.mapRect(QRectF(rect())).toRect();
    const QSize pixels = _image.size().scaled(area.size(), Qt::KeepAspectRatio);
    if (_scaled.size() != pixels) {
        _scaled = QPixmap::fromImage(
            _image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }
    const QSize free = area.size() - pixels;
    painter.setWorldTransform(toScreen.inverted(), true);
    painter.drawPixmap(area.topLeft() + QPoint(free.width() / 2, free.height() / 2), _scaled);
}

}  // namespace ambulet
