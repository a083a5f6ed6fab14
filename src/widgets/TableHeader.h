#pragma once

#include <QHeaderView>

namespace ambulet {

/// The header of a table whose cells have padding. Its titles have the same padding, so that they
/// are aligned with the cells. A title that does not fit ends with an ellipsis, and the tooltip has
/// the whole title.
class TableHeader : public QHeaderView {
    Q_OBJECT

  public:
    /// `padding`: of the cells, in points, in addition to the style's.
    TableHeader(int padding, QWidget* parent);

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    bool viewportEvent(QEvent* event) override;

  private:
    int cellMargin() const;

    int _padding;
};

}  // namespace ambulet
