// The widths of the columns.

#include "widgets/RowDelegate.h"
#include "widgets/TableModel.h"
#include "widgets/TableView.h"
#include "widgets/TableViewDataSource.h"

#include <QFontMetrics>

#include <algorithm>
#include <map>

namespace ambulet {

namespace {

/// Replaces every digit of a text by the widest digit of a font. So the result is at least as wide
/// as every text that differs only in its digits.
class WidestDigits {
  public:
    explicit WidestDigits(const QFontMetrics& metrics) : _metrics(metrics) {}

    QString in(QString text) {
        for (QChar& character : text) {
            if (character.category() == QChar::Number_DecimalDigit) {
                character =
                    widest(static_cast<char16_t>(character.unicode() - character.digitValue()));
            }
        }
        return text;
    }

  private:
    QChar widest(char16_t zero) {
        const auto [found, isNew] = _widestByZero.try_emplace(zero, zero);
        for (char16_t digit = zero; isNew && digit <= zero + 9; ++digit) {
            if (_metrics.horizontalAdvance(QChar(digit)) >
                _metrics.horizontalAdvance(QChar(found->second))) {
                found->second = digit;
            }
        }
        return found->second;
    }

    QFontMetrics _metrics;
    std::map<char16_t, char16_t> _widestByZero;  // the key is the zero of a script
};

}  // namespace

// Keeps the column's minimum width, because QHeaderView has only one minimum for all columns.
void TableView::columnDidResize(int column, int /*oldWidth*/, int newWidth) {
    const int minimum = _model->columns()[static_cast<std::size_t>(column)].minimumWidth;
    if (newWidth < minimum) {
        setColumnWidth(column, minimum);
    } else {
        fitLastColumn();
    }
}

// Gives the rest of the width to the last column. If the rest is less than that column needs, the
// table scrolls horizontally.
void TableView::fitLastColumn() {
    const int last = _model->columnCount() - 1;
    if (last < 0) {
        return;
    }
    int others = 0;
    for (int column = 0; column < last; ++column) {
        others += columnWidth(column);
    }
    const int minimum =
        std::max(_model->columns()[static_cast<std::size_t>(last)].minimumWidth, _lastTextsWidth);
    const int left = viewport()->width() - others;
    // Qt would briefly show the horizontal scroll bar when the vertical one appears, because the
    // columns are then too wide for a moment.
    setHorizontalScrollBarPolicy(left < minimum ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    setColumnWidth(last, std::max(minimum, left));
}

// Widens the columns whose texts need more than the initial width, as with larger fonts and in some
// languages. Widths that the user has set do not change.
void TableView::fitColumnsToTexts() {
    for (int column = 0; column < static_cast<int>(_ownWidths.size()) - 1; ++column) {
        int& own = _ownWidths[static_cast<std::size_t>(column)];
        if (columnWidth(column) == own) {
            const int asked = _model->columns()[static_cast<std::size_t>(column)].width;
            own = std::max(asked, widthOfTexts(column));
            setColumnWidth(column, own);
        }
    }
    if (!_ownWidths.empty()) {
        _lastTextsWidth = widthOfTexts(static_cast<int>(_ownWidths.size()) - 1);
        fitLastColumn();
    }
}

int TableView::widthOfTexts(int column) const {
    int widest = fontMetrics().horizontalAdvance(
        _model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
    if (_model->dataSource() != nullptr && _model->rowCount() > 0) {
        QFont bold = font();
        bold.setBold(true);
        const QFontMetrics groupMetrics(bold);
        WidestDigits digits(fontMetrics());
        WidestDigits groupDigits(groupMetrics);
        const QString& identifier = _model->columns()[static_cast<std::size_t>(column)].identifier;
        for (const int row : _model->dataSource()->rowsWithWidestTexts(identifier)) {
            const QModelIndex index = _model->index(row, column);
            const bool group = index.data(TableModel::groupRole).toBool();
            const QString text = (group ? groupDigits : digits).in(index.data().toString());
            widest =
                std::max(widest, (group ? groupMetrics : fontMetrics()).horizontalAdvance(text));
        }
    }
    return widest + spaceBesideTexts();
}

int TableView::spaceBesideTexts() const {
    return 2 * RowDelegate::textMargin(*this) + 1;
}

}  // namespace ambulet
