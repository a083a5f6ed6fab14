#pragma once

#include <QStyledItemDelegate>

namespace ambulet {

class TableView;

/// Draws the rows of a table:
/// - A group row has a background of its own and looks enabled, although it has no item flags.
/// - A row that the table counts as selected looks selected, even a group row.
/// - The direction of a text depends on the text, not on the window.
/// - No cell shows a focus frame.
class RowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

  public:
    /// Space at each side of a cell's text, in points, in addition to the style's.
    static constexpr int padding = 11;

    /// The distance of a cell's text from the cell's left and right edge, in `table`'s style.
    static int textMargin(const QWidget& table);

    explicit RowDelegate(TableView& table);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

  private:
    TableView& _table;
};

}  // namespace ambulet
