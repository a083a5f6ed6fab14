#pragma once

#include <QHeaderView>

namespace ambulet {

/// The header of a TableView. Its titles have the same margins as the texts of the cells. A title
/// that does not fit ends with an ellipsis, and the tooltip has the whole title.
class TableHeader : public QHeaderView {
    Q_OBJECT

  public:
    explicit TableHeader(QWidget* parent);

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    bool viewportEvent(QEvent* event) override;
};

}  // namespace ambulet
