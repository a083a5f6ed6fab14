#pragma once

#include <QHeaderView>

namespace ambulet {

/// The header of a table whose cells keep some space at both sides of their texts: its titles keep
/// the same, so that they stand in line with the cells. A title that is cut ends in an ellipsis and
/// is whole in a tooltip.
class TableHeader : public QHeaderView {
    Q_OBJECT

  public:
    /// `padding`: the space, in points, that the cells keep beyond the style's own.
    TableHeader(int padding, QWidget* parent);

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    bool viewportEvent(QEvent* event) override;

  private:
    int cellMargin() const;

    int _padding;
};

}  // namespace ambulet
