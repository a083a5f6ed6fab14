#pragma once

#include <QLayout>
#include <QRect>

#include <memory>
#include <vector>

namespace ambulet {

/// Places views by fixed frames in points, counted from the lower left corner of the content, y
/// upwards, as they are at the content's initial size. When the content has another size, one part
/// of each view's row and one of its column takes up the difference. A part never gets smaller than
/// nothing.
///
/// One point is one device-independent pixel. The layout asks for the initial size and allows any.
class AutoresizingLayout final : public QLayout {
    Q_OBJECT

  public:
    /// What stretches from left to right: a view stays at the left, widens, or stays at the right.
    enum class Horizontally { RightMargin, Width, LeftMargin };
    /// What stretches from bottom to top: a view stays at the bottom, grows, or stays at the top.
    enum class Vertically { TopMargin, Height, BottomMargin };

    /// The layout of `parent`. `initial`: the content's size that all frames are meant for.
    AutoresizingLayout(QSize initial, QWidget* parent);
    ~AutoresizingLayout() override;

    /// Adds a view, which becomes a child of the layout's widget.
    void add(std::unique_ptr<QWidget> view, const QRect& frame,
             Horizontally horizontally = Horizontally::RightMargin,
             Vertically vertically = Vertically::TopMargin);

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    QSize sizeHint() const override { return _initial; }
    QSize minimumSize() const override { return {0, 0}; }
    void setGeometry(const QRect& content) override;

  private:
    struct Place {
        std::unique_ptr<QLayoutItem> item;
        QRect frame;
        Horizontally horizontally;
        Vertically vertically;
    };

    QRect geometry(const Place& place, const QRect& content) const;

    QSize _initial;
    std::vector<Place> _places;
};

}  // namespace ambulet
