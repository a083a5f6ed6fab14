#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace ambulet {

/// Shows a picture as large as it fits, whole, undistorted and in the middle. Main thread only.
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
    QPixmap _scaled;  // to the pixels that it covers on the screen
};

}  // namespace ambulet
