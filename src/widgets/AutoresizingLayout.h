#pragma once

#include <QLayout>
#include <QRect>

#include <memory>
#include <vector>

namespace ambulet {

/// Places views by frames that are given for the content's initial size: in points, with the origin
/// at the content's lower left corner and y upwards. When the content is resized, each view's
/// margin or size named by `Horizontally` and `Vertically` changes by the difference. No view gets
/// a negative size.
///
/// One point is one device-independent pixel, times the factor of `setScale`. The size hint is the
/// initial size; the minimum size is 0.
class AutoresizingLayout final : public QLayout {
    Q_OBJECT

  public:
    /// What stretches horizontally. The view stays at the left, widens, or stays at the right.
    enum class Horizontally { RightMargin, Width, LeftMargin };
    /// What stretches vertically. The view stays at the bottom, grows, or stays at the top.
    enum class Vertically { TopMargin, Height, BottomMargin };

    /// Becomes the layout of `parent`. `initial` is the content size that the frames are given for.
    AutoresizingLayout(QSize initial, QWidget* parent);
    ~AutoresizingLayout() override;

    /// Sets the factor for the initial size, all frames, and the font sizes that the views had when
    /// they were added. Only font sizes that were set in pixels change. The factor is 1 at first.
    void setScale(double scale);

    /// Adds a view, which becomes a child of the layout's parent.
    void add(std::unique_ptr<QWidget> view, const QRect& frame,
             Horizontally horizontally = Horizontally::RightMargin,
             Vertically vertically = Vertically::TopMargin);

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    QSize sizeHint() const override { return scaled(_initial); }
    QSize minimumSize() const override { return {0, 0}; }
    void setGeometry(const QRect& content) override;

  private:
    struct Place {
        std::unique_ptr<QLayoutItem> item;
        QRect frame;
        Horizontally horizontally;
        Vertically vertically;
        int fontPixels = -1;  // font size at factor 1; -1 if it was not set in pixels
    };

    int scaled(int length) const;
    QSize scaled(QSize size) const;
    void scaleFont(const Place& place) const;
    QRect frameWithin(const Place& place, const QRect& content) const;

    QSize _initial;
    double _scale = 1;
    std::vector<Place> _places;
};

}  // namespace ambulet
