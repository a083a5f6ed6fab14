#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace ambulet {

/// Shows an image centred and scaled to the view, up or down, in proportion. Main thread only.
class ImageView final : public QWidget {
    Q_OBJECT

  public:
    using QWidget::QWidget;

    /// A null image empties the view.
    void setImage(const QImage& image);
    const QImage& image() const { return _image; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QImage _image;
    QPixmap _scaled;  // to the screen's pixels
};

}  // namespace ambulet
