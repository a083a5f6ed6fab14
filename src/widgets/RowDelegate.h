#pragma once

#include <QStyledItemDelegate>

namespace ambulet {

class TableView;

/// Draws a table's rows. Group rows stand on a band, and look enabled: that they cannot be selected
/// is no reason to dim them. Every row that counts as selected is drawn so, a group row, too. A
/// text has its own direction, whatever the window's is. No cell shows a focus frame.
class RowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

  public:
    /// Points at either side of a cell's text, beyond the style's own.
    static constexpr int padding = 11;

    explicit RowDelegate(TableView& table);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

  private:
    TableView& _table;
};

}  // namespace ambulet
