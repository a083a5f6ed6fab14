#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace ambulet {

/// Shows an image, centred and scaled up or down to fit the view. The image keeps its proportions.
/// Main thread only.
class ImageView final : public QWidget {
    Q_OBJECT

  public:
    ImageView();

    /// Shows `image`; a null image empties the view. `description` tells assistive programs what
    /// the image shows.
    void setImage(const QImage& image, const QString& description);
    const QImage& image() const { return _image; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QImage _image;
    QPixmap _scaled;  // in the screen's pixels
};

}  // namespace ambulet
