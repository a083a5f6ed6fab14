#pragma once

#include <QHeaderView>

namespace ambulet {

/// The header of a table whose cells keep some room at both sides of their texts: its titles keep
/// the same, so that they stand in line with the cells.
class TableHeader : public QHeaderView {
    Q_OBJECT

  public:
    /// `padding`: the room, in points, that the cells keep beyond the style's own.
    TableHeader(int padding, QWidget* parent);

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;

  private:
    int _padding;
};

}  // namespace ambulet
