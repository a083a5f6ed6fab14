#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace ambulet {

/// Shows a picture: an image centred and scaled to the view, up or down, in proportion. Main thread
/// only.
class ImageView final : public QWidget {
    Q_OBJECT

  public:
    ImageView();

    /// Shows `image`; a null image empties the view. `description` says what it shows, for
    /// assistive programs.
    void setImage(const QImage& image, const QString& description);
    const QImage& image() const { return _image; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QImage _image;
    QPixmap _scaled;  // to the screen's pixels
};

}  // namespace ambulet
